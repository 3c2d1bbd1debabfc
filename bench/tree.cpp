#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

#include "bare_tree.h"
#include "figures.h"
#include "heap_size.h"
#include "hosting/event_sink.h"
#include "hosting/late_bound.h"
#include "node_list.h"
#include "program.h"

namespace {

using bench::Figures;
using bench::Times;
using hosting::LateBound;
using hosting::Ref;

constexpr std::size_t manyNodes = 100000;
constexpr std::size_t fewNodes = 100;
constexpr long subtreeNodes = 10000;
constexpr int rounds = 5;

/// A described tree of the library, and the system's tree in it, which its user uses.
class DescribedTree {
public:
    explicit DescribedTree(IDispatch* repository) : repository_(repository) {
        control_.Call(L"Create");
        control_.PutRef(L"Repository", repository_.Get());
        tree_ = bench::InnerWindow(control_.Get(), WC_TREEVIEWW);
    }
    DescribedTree(const DescribedTree&) = delete;
    DescribedTree& operator=(const DescribedTree&) = delete;
    ~DescribedTree() { control_.Call(L"Destroy"); }

    /// Describes the nodes of a meta node below the root, each of which can be opened.
    void DescribeNodes(const wchar_t* metaNode, const wchar_t* property) const {
        DescribeNodes(Root(), metaNode, property);
    }
    /// Describes a folder with such nodes.
    void DescribeFolder(const wchar_t* metaNode, const wchar_t* property) const {
        DescribeNodes(Describe(Root(), L"Folder", L"", L"Folder"), metaNode, property);
    }
    void OpenRoot() const { Open(Next(TVGN_ROOT, nullptr)); }
    /// The first of the folders, or the one after the last that was asked for.
    HTREEITEM NextFolder() {
        folder_ = folder_ == nullptr ? Next(TVGN_CHILD, Next(TVGN_ROOT, nullptr))
                                     : Next(TVGN_NEXT, folder_);
        return folder_;
    }
    void Open(HTREEITEM item) const {
        SendMessageW(tree_, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(item));
    }
    void Close(HTREEITEM item) const {
        SendMessageW(tree_, TVM_EXPAND, TVE_COLLAPSE, reinterpret_cast<LPARAM>(item));
    }
    /// Puts the tree back to its beginning.
    void Restart() const {
        control_.Call(L"Destroy");
        control_.Call(L"Create");
        control_.PutRef(L"Repository", repository_.Get());
    }

private:
    LateBound Root() const { return LateBound(control_.Call(L"GetRootNodeDescription")); }
    static void DescribeNodes(const LateBound& parent, const wchar_t* metaNode,
                              const wchar_t* property) {
        Describe(Describe(parent, L"Extension", metaNode, property), L"Folder", L"", L"Below");
    }
    static LateBound Describe(const LateBound& parent, const wchar_t* typ, const wchar_t* type,
                              const wchar_t* caption) {
        return LateBound(parent.Call(L"AddChild", typ, type, caption, L"Folder", L""));
    }
    HTREEITEM Next(UINT which, HTREEITEM item) const {
        return reinterpret_cast<HTREEITEM>(
            SendMessageW(tree_, TVM_GETNEXTITEM, which, reinterpret_cast<LPARAM>(item)));
    }
    Ref<IDispatch> repository_;
    LateBound control_ = LateBound::Create(L"OrvaneControls.TreeView");
    HWND tree_ = nullptr;
    HTREEITEM folder_ = nullptr;
};

/// Opening a node with many children, against the calls and the items in a bare tree.
Times Opening(IDispatch* repository, const wchar_t* metaNode, const wchar_t* property) {
    const DescribedTree tree(repository);
    tree.DescribeNodes(metaNode, property);
    bench::BareTree bare;
    return bench::Compare(
        rounds, [&] { tree.OpenRoot(); },
        [&] { bare.Open(bare.AddFolder(), *repository, metaNode, property); },
        [&] {
            tree.Restart();
            tree.DescribeNodes(metaNode, property);
            bare.Clear();
        });
}

/// A repository of the cheapest objects that there can be, where what the tree does itself weighs
/// most.
Ref<IDispatch> RepositoryOf(std::size_t nodes) {
    return Ref<IDispatch>(
        hosting::Make<bench::Root>(Ref<IDispatch>(hosting::Make<bench::MetaNode>(nodes))));
}

void MeasureOpening(Figures& figures) {
    const LateBound repository = LateBound::Create(L"OrvaneRepository.Repository");
    repository.Call(L"New");
    repository.Call(L"Generate", 1L, static_cast<long>(manyNodes), 0L, 1L);
    figures.Add("tree_open_100000_to_bare_tree",
                Opening(repository.Get(), L"Type 1", L"Property 1"), 1.25);
    Figures::Note("tree_open_cheapest_to_bare_tree",
                  Opening(RepositoryOf(manyNodes).Get(), L"Any", L"Name"));
}

void MeasureGrowth(Figures& figures) {
    const DescribedTree large(RepositoryOf(manyNodes).Get());
    const DescribedTree small(RepositoryOf(manyNodes / 2).Get());
    const auto describe = [&] {
        for (const DescribedTree* tree : {&large, &small}) tree->DescribeNodes(L"Any", L"Name");
    };
    describe();
    const Times times = bench::Compare(
        rounds, [&] { large.OpenRoot(); }, [&] { small.OpenRoot(); },
        [&] {
            large.Restart();
            small.Restart();
            describe();
        });
    figures.Add("tree_growth_to_100000", times, 2.1);
    bench::BareTree bareLarge;
    bench::BareTree bareSmall;
    const Ref<IDispatch> all = RepositoryOf(manyNodes);
    const Ref<IDispatch> half = RepositoryOf(manyNodes / 2);
    Figures::Note(
        "tree_growth_of_bare_tree",
        bench::Compare(
            rounds, [&] { bareLarge.Open(bareLarge.AddFolder(), *all.Get(), L"Any", L"Name"); },
            [&] { bareSmall.Open(bareSmall.AddFolder(), *half.Get(), L"Any", L"Name"); },
            [&] {
                bareLarge.Clear();
                bareSmall.Clear();
            }));
}

/// A repository with many nodes of one type and few of another.
LateBound ManyAndFew() {
    const LateBound repository = LateBound::Create(L"OrvaneRepository.Repository");
    repository.Call(L"New");
    repository.Call(L"Generate", 1L, static_cast<long>(manyNodes), 0L, 1L);
    repository.Call(L"MakeMetaNode", L"Few");
    for (std::size_t i = 0; i < fewNodes; ++i) {
        const std::wstring name = std::to_wstring(i);
        repository.Call(L"MakeNode", (L"few " + name).c_str(), L"Few", name.c_str());
    }
    return repository;
}

/// A node of 100 children in a tree that holds 200,000 nodes, placeholders included, and in one
/// that holds none.
void MeasureOpeningInALargeTree(Figures& figures) {
    const LateBound repository = ManyAndFew();
    DescribedTree large(repository.Get());
    DescribedTree small(repository.Get());
    for (DescribedTree* tree : {&large, &small}) {
        tree->DescribeFolder(L"Type 1", L"Property 1");
        for (int i = 0; i < 3 * rounds; ++i) tree->DescribeFolder(L"Few", L"Name");
        tree->OpenRoot();
    }
    const auto compare = [&] {
        return bench::Compare(
            rounds, [&] { large.Open(large.NextFolder()); },
            [&] { small.Open(small.NextFolder()); });
    };
    const HTREEITEM many = large.NextFolder();
    small.NextFolder();
    large.Open(many);
    large.Close(many);
    figures.Add("tree_open_100_in_200000_to_empty", compare(), 1.5);
    // Where they are all shown, the system's tree works out anew where each of them stands.
    large.Open(many);
    Figures::Note("tree_open_100_in_200000_shown_to_empty", compare());
    bench::BareTree bare;
    const HTREEITEM root = bare.AddFolder();
    const HTREEITEM bareMany = bare.AddFolder(root);
    std::vector<HTREEITEM> few;
    for (int i = 0; i < rounds; ++i) few.push_back(bare.AddFolder(root));
    bare.Expand(root);
    bare.Open(bareMany, *repository.Get(), L"Type 1", L"Property 1");
    auto next = few.begin();
    figures.Add("tree_open_100_in_200000_shown_to_bare_tree",
                bench::Compare(
                    rounds, [&] { large.Open(large.NextFolder()); },
                    [&] { bare.Open(*next++, *repository.Get(), L"Few", L"Name"); }),
                1.5);
}

/// A hierarchy tree with a node at the top, one below it that a link led to, and many below that.
/// Its host allows every node.
class HierarchyTree {
public:
    explicit HierarchyTree(long nodes) : nodes_(hosting::Make<bench::MetaNode>(Count(nodes) + 1)) {
        control_.Call(L"Create");
        control_.Put(L"withFolders", true);
        sink_.Connect(control_.Get(), [](const hosting::Event& event) {
            if (event.name != L"AddingNode") return S_OK;
            const LateBound proposal(*V_DISPATCHREF(&event.Argument(0)));
            proposal.Put(L"Allowed", true);
            proposal.Put(L"Caption", L"Node");
            return S_OK;
        });
        const auto none = hosting::Make<bench::MetaNode>(0);
        control_.Call(L"AddExtension", Ref<IDispatch>(none).Get());
        control_.Call(L"AddSubNode", nodes_->At(0).Get(), L"ID:1", nodes_->At(0).Get());
        for (long i = 0; i < nodes; ++i) {
            const Ref<IDispatch> node = nodes_->At(Count(i) + 1);
            control_.Call(L"AddSubNode", node.Get(), L"ID:2", node.Get());
        }
    }
    HierarchyTree(const HierarchyTree&) = delete;
    HierarchyTree& operator=(const HierarchyTree&) = delete;

    void RemoveAll() const { control_.Call(L"RemoveLink", nodes_->At(0).Get()); }
    void FindSome(long nodes) const {
        for (long i = 0; i < 1000; ++i) {
            control_.Call(L"GetInfoFromObject", nodes_->At(Count(i * 7919 % nodes) + 1).Get());
        }
    }

private:
    static std::size_t Count(long number) { return static_cast<std::size_t>(number); }

    LateBound control_ = LateBound::Create(L"OrvaneControls.HierarchyTreeView");
    hosting::EventSink sink_;
    Ref<bench::MetaNode> nodes_;
};

void MeasureHierarchy() {
    const auto removing = [](long nodes) {
        const HierarchyTree tree(nodes);
        return bench::Best(1, [&] { tree.RemoveAll(); });
    };
    Figures::Note("tree_remove_10000_to_5000",
                  Times{removing(subtreeNodes), removing(subtreeNodes / 2)});
    const auto finding = [](long nodes) {
        const HierarchyTree tree(nodes);
        return bench::Best(rounds, [&] { tree.FindSome(nodes); });
    };
    Figures::Note("tree_find_1000_in_200000_to_2000", Times{finding(200000), finding(2000)});
}

/// Of a node and the placeholder below it.
void MeasureMemory(Figures& figures) {
    const DescribedTree tree(RepositoryOf(manyNodes).Get());
    tree.DescribeNodes(L"Any", L"Name");
    const std::size_t before = bench::HeapSize();
    tree.OpenRoot();
    const std::size_t after = bench::HeapSize();
    figures.Add("tree_bytes_per_node",
                static_cast<double>(after - before) / static_cast<double>(manyNodes), 1200);
}

void Measure(Figures& figures) {
    MeasureOpening(figures);
    MeasureGrowth(figures);
    MeasureOpeningInALargeTree(figures);
    MeasureHierarchy();
    MeasureMemory(figures);
}

}  // namespace

int wmain() {
    return bench::RunProgram(Measure);
}
