#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <span>
#include <string>

#include "bare_rows.h"
#include "bare_window.h"
#include "heap_size.h"
#include "hosting/late_bound.h"
#include "node_list.h"
#include "program.h"

namespace {

using bench::Figures;
using bench::Times;
using hosting::LateBound;
using hosting::Ref;

constexpr std::array<const wchar_t*, 5> properties = {L"Name", L"A", L"B", L"C", L"D"};
constexpr std::size_t manyRows = 100000;
constexpr std::size_t fewRows = 1000;
constexpr std::size_t mostRows = sizeof(void*) == 8 ? 1000000 : 300000;
constexpr int rounds = 5;

using Names = std::span<const wchar_t* const>;

LateBound MakeList(Names columns = properties) {
    const LateBound list = LateBound::Create(L"OrvaneControls.ListView");
    list.Call(L"Create");
    for (const wchar_t* property : columns) list.Call(L"AddColumn", property, property, L"1000");
    return list;
}

void Fill(const LateBound& list, const Ref<bench::MetaNode>& nodes) {
    list.Call(L"SetList_Nodes", Ref<IDispatch>(nodes).Get(), false);
}

/// Filling from a meta node, against the calls alone and against the system's list.
struct Filling {
    Filling(IDispatch* metaNode, Names columns) {
        const LateBound list = MakeList(columns);
        bench::BareRows bare;
        bench::SystemList system(static_cast<int>(columns.size()));
        const auto clear = [&] {
            list.Call(L"Clear");
            bare.Clear();
            system.Clear();
        };
        const auto fill = [&] { list.Call(L"SetList_Nodes", metaNode, false); };
        toCalls = bench::Compare(
            rounds, fill, [&] { bare.Fill(*metaNode, columns); }, clear);
        toSystemList = bench::Compare(
            rounds, fill, [&] { system.Fill(*metaNode, columns); }, clear);
    }
    Times toCalls;
    Times toSystemList;
};

/// From the repository component, and from the cheapest objects that there can be, where what the
/// list does itself weighs most.
void MeasureFilling(Figures& figures) {
    constexpr std::array<const wchar_t*, 5> generated = {
        L"Property 1", L"Property 2", L"Property 3", L"Property 4", L"Property 5"};
    const LateBound repository = LateBound::Create(L"OrvaneRepository.Repository");
    repository.Call(L"New");
    repository.Call(L"Generate", 1L, static_cast<long>(manyRows), 0L, 5L);
    IDispatch* metaNode = nullptr;
    const _variant_t found = repository.Call(L"MetaNodes", L"Type 1");
    metaNode = V_DISPATCH(&found);
    const Filling ofRepository(metaNode, generated);
    figures.Add("list_fill_100000_to_bare_loop", ofRepository.toCalls, 1.10);
    figures.Add("list_fill_100000_to_system_list", ofRepository.toSystemList, 1.00);
    const auto nodes = hosting::Make<bench::MetaNode>(manyRows);
    const Filling ofCheapest(Ref<IDispatch>(nodes).Get(), properties);
    Figures::Note("list_fill_cheapest_to_bare_loop", ofCheapest.toCalls);
    Figures::Note("list_fill_cheapest_to_system_list", ofCheapest.toSystemList);
}

void MeasureGrowth(Figures& figures, std::size_t rows) {
    const LateBound list = MakeList();
    const auto all = hosting::Make<bench::MetaNode>(rows);
    const auto half = hosting::Make<bench::MetaNode>(rows / 2);
    const Times times = bench::Compare(
        rounds, [&] { Fill(list, all); }, [&] { Fill(list, half); }, [&] { list.Call(L"Clear"); });
    figures.Add("list_growth_to_" + std::to_string(rows), times, 2.1);
}

/// A list of nodes, and some of them in no order.
struct Filled {
    explicit Filled(std::size_t rows) : nodes(hosting::Make<bench::MetaNode>(rows)) {
        Fill(list, nodes);
        for (std::size_t i = 0; i < fewRows; ++i) some.push_back(nodes->At(i * 7919 % rows));
    }
    Ref<bench::MetaNode> nodes;
    LateBound list = MakeList();
    std::vector<Ref<IDispatch>> some;
};

/// The time of a member for single rows in a long list to that in a short one.
void MeasureSingleRows(Figures& figures) {
    const Filled large(manyRows);
    const Filled small(fewRows);
    const auto compare = [&](const char* name, auto&& work, auto&& after) {
        const auto each = [&](const Filled& filled) {
            return [&] {
                for (const auto& node : filled.some) work(filled.list, node.Get());
            };
        };
        const auto putBack = [&] {
            for (const Filled* filled : {&large, &small}) {
                for (const auto& node : filled->some) after(filled->list, node.Get());
            }
        };
        figures.Add(name, bench::Compare(rounds, each(large), each(small), putBack), 1.5);
    };
    const auto nothing = [](const LateBound&, IDispatch*) {};
    compare(
        "list_update_in_100000_to_1000",
        [](const LateBound& list, IDispatch* node) { list.Call(L"UpdateEntry", node); }, nothing);
    compare(
        "list_set_selection_in_100000_to_1000",
        [](const LateBound& list, IDispatch* node) { list.PutRef(L"selection", node); }, nothing);
    compare(
        "list_get_selection_in_100000_to_1000",
        [](const LateBound& list, IDispatch*) { list.Get(L"selection"); }, nothing);
}

/// Each run deletes what the one before added again.
void MeasureDeleting(Figures& figures) {
    const Filled large(manyRows);
    const Filled small(fewRows);
    double times[2] = {};
    for (int i = 0; i < rounds; ++i) {
        const Filled* const both[] = {&large, &small};
        for (int which = 0; which < 2; ++which) {
            const Filled& filled = *both[which];
            const double time = bench::Best(1, [&] {
                for (const auto& node : filled.some) filled.list.Call(L"DeleteEntry", node.Get());
            });
            for (const auto& node : filled.some) filled.list.Call(L"AddEntry", node.Get());
            times[which] = i == 0 ? time : std::min(times[which], time);
        }
    }
    figures.Add("list_delete_in_100000_to_1000", Times{times[0], times[1]}, 1.5);
}

void MeasureSorting(Figures& figures) {
    const auto nodes = hosting::Make<bench::MetaNode>(manyRows);
    const LateBound list = MakeList();
    Fill(list, nodes);
    const HWND window = bench::InnerWindow(list.Get(), WC_LISTVIEWW);
    NMLISTVIEW click = {};
    click.hdr = {window, 0, static_cast<UINT>(LVN_COLUMNCLICK)};
    click.iItem = -1;
    click.iSubItem = 1;
    std::vector<std::wstring> texts;
    for (std::size_t i = 0; i < manyRows; ++i) {
        texts.push_back(LateBound(nodes->At(i)).Get(L"name").bstrVal);
    }
    std::vector<std::wstring> sorted = texts;
    const auto before = [](const std::wstring& a, const std::wstring& b) {
        return CompareStringEx(LOCALE_NAME_USER_DEFAULT, NORM_IGNORECASE, a.data(),
                               static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()),
                               nullptr, nullptr, 0) < CSTR_EQUAL;
    };
    double ours = 0;
    double theirs = 0;
    for (int i = 0; i < rounds; ++i) {
        const double time = bench::Best(1, [&] {
            SendMessageW(GetParent(window), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&click));
        });
        const double bare =
            bench::Best(1, [&] { std::stable_sort(sorted.begin(), sorted.end(), before); });
        ours = i == 0 ? time : std::min(ours, time);
        theirs = i == 0 ? bare : std::min(theirs, bare);
        sorted = texts;
        // Back to the order of the repository, without a sort column.
        list.Call(L"Create");
        for (const wchar_t* property : properties) {
            list.Call(L"AddColumn", property, property, L"1000");
        }
        Fill(list, nodes);
    }
    figures.Add("list_sort_100000_to_stable_sort", Times{ours, theirs}, 1.2);
}

void MeasureMemory(Figures& figures) {
    const auto nodes = hosting::Make<bench::MetaNode>(manyRows);
    const LateBound list = MakeList();
    Fill(list, nodes);
    list.Call(L"Clear");
    const std::size_t before = bench::HeapSize();
    Fill(list, nodes);
    const std::size_t after = bench::HeapSize();
    figures.Add("list_bytes_per_row",
                static_cast<double>(after - before) / static_cast<double>(manyRows), 400);
}

void Measure(Figures& figures) {
    MeasureSorting(figures);
    MeasureFilling(figures);
    MeasureGrowth(figures, manyRows);
    MeasureGrowth(figures, mostRows);
    MeasureSingleRows(figures);
    MeasureDeleting(figures);
    MeasureMemory(figures);
}

}  // namespace

int wmain() {
    return bench::RunProgram(Measure);
}
