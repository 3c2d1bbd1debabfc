#include "trees/hierarchy_tree.h"

#include <optional>
#include <utility>

#include "ole/text.h"
#include "ole/variant_memory.h"

namespace trees {

/// Where a node is added: below a node, or a node's key, or at the top.
struct HierarchyTree::Place {
    widgets::NodePtr node;
    std::optional<std::wstring> key;
    bool IsGiven() const { return node != nullptr || key.has_value(); }
};

void HierarchyTree::ForgetInfos() {
    // What goes may call back: it finds the new ones.
    const auto before = std::exchange(infos_, std::make_shared<HierarchyInfos>());
}

void HierarchyTree::LetGo() {
    const auto before = std::exchange(infos_, nullptr);
}

HierarchyInfos& HierarchyTree::Infos() const {
    if (!infos_) ole::Throw(ole::Number::objectNotSet);
    return *infos_;
}

HierarchyTree::Place HierarchyTree::PlaceIn(const VARIANT& keyOrInfo) const {
    const std::optional<VARIANT> given = ole::Borrowed(keyOrInfo);
    if (!given) ole::Throw(ole::Number::typeMismatch);
    switch (V_VT(&*given)) {
        case VT_EMPTY:
            return {};
        case VT_ERROR:
            if (V_ERROR(&*given) == DISP_E_PARAMNOTFOUND) return {};
            ole::Throw(ole::Number::typeMismatch);
        case VT_DISPATCH:
        case VT_UNKNOWN: {
            const auto info = ole::OwnRecord<HTNodeInfo>(V_UNKNOWN(&*given));
            if (!info) return {};
            return {nullptr, info->key.Text()};
        }
        default:
            return {nullptr, ole::ToWide(ole::ToText(*given))};
    }
}

widgets::NodePtr HierarchyTree::NodeAt(const Place& place) const {
    return place.key ? FindNode(pane_, *place.key) : place.node;
}

ole::Ref<HTNodeInfo> HierarchyTree::Propose(const ole::Object& object,
                                            const ole::Ref<HTNewNodeInfo>& proposal,
                                            const ole::Object& link) {
    if (!proposal) ole::Throw(ole::Number::objectNotSet);
    proposal->SetObject(object);
    proposal->SetLink(link);
    pane_.RaiseAdding(*proposal.Get());
    if (!proposal->allowed) return nullptr;
    const std::int32_t number = NextNumber(counter_);
    const auto info = ole::Make<HTNodeInfo>();
    info->nodeType = proposal->nodeType;
    info->key.SetNumber(number);
    info->SetObject(object);
    info->SetLink(link);
    Infos().Add(number, info);
    return info;
}

widgets::NodePtr HierarchyTree::MakeNode(const HTNodeInfo& info, const HTNewNodeInfo& proposal,
                                         const Place& place) {
    const auto number = info.key.Number();
    if (!number) ole::Throw(ole::Number::elementNotFound);
    return pane_.AddNode(*number, NodeAt(place), ole::ViewOf(proposal.caption),
                         ole::ViewOf(proposal.image));
}

void HierarchyTree::AddRoot(const ole::Object& object, const VARIANT& root) {
    AddRoot(object, PlaceIn(root));
}

void HierarchyTree::AddRoot(const ole::Object& object, const Place& place) {
    const auto proposal = ole::Make<HTNewNodeInfo>();
    proposal->nodeType = HTNode;
    const auto info = Propose(object, proposal, {});
    if (!info) return;
    const widgets::NodePtr node = MakeNode(*info.Get(), *proposal.Get(), place);
    if (HasLinks(object)) AddPlaceholder(pane_, counter_, node, dummyImage);
}

bool HierarchyTree::HasLinks(const ole::Object& object) {
    const ole::Object metaLinks = object.CallForObject(L"parent").CallForObject(L"Outgoing");
    ole::Enumeration elements(metaLinks);
    _variant_t element;
    while (elements.Next(element)) {
        const _bstr_t name = ole::ToText(ole::Object::From(element).Call(L"name"));
        _variant_t count = object.CallForObject(L"Outgoing_", name).Call(L"Count");
        _variant_t number;
        ole::Check(ole::ChangeType(number, count, VT_I4));
        if (V_I4(&number) > 0) return true;
    }
    return false;
}

widgets::NodePtr HierarchyTree::AddFolder(HTNodeType kind, const ole::Object& object,
                                          const Place& place) {
    const auto proposal = ole::Make<HTNewNodeInfo>();
    proposal->nodeType = kind;
    proposal->allowed = true;
    proposal->image = ole::ToBstr(folderImage);
    proposal->caption = ole::ToText(object.Call(L"name"));
    const auto info = Propose(object, proposal, {});
    return info ? MakeNode(*info.Get(), *proposal.Get(), place) : nullptr;
}

void HierarchyTree::AddExtension(const ole::Object& metaNode) {
    Place place;
    if (withFolders) {
        place.node = AddFolder(HTMetaNodeFolder, metaNode, {});
        if (!place.node) return;
    }
    metaNode.CallForObject(L"Extension").Each([&](const ole::Object& object) {
        AddRoot(object, place);
    });
}

void HierarchyTree::AddSubNode(const ole::Object& object, const VARIANT& parent,
                               const ole::Object& link) {
    AddSubNode(object, PlaceIn(parent), link);
}

void HierarchyTree::AddSubNode(const ole::Object& object, const Place& place,
                               const ole::Object& link) {
    const auto proposal = ole::Make<HTNewNodeInfo>();
    proposal->nodeType = HTLink;
    const auto info = Propose(object, proposal, link);
    if (!info) return;
    if (!place.IsGiven()) ole::Throw(ole::Number::objectNotSet);
    const widgets::NodePtr node = MakeNode(*info.Get(), *proposal.Get(), place);
    AddPlaceholder(pane_, counter_, node, dummyImage);
}

void HierarchyTree::AddSubNodeToCurrent(const ole::Object& object, const ole::Object& link) {
    const widgets::NodePtr selected = pane_.SelectedNode();
    if (selected && !IsUnfilled(*selected)) AddSubNode(object, Place{selected, {}}, link);
}

void HierarchyTree::AddNode(const ole::Ref<HTNodeInfo>& parent, const ole::Object& link) {
    if (!parent) return;
    const auto number = parent->key.Number();
    widgets::NodePtr node = number ? pane_.Nodes().Find(*number) : nullptr;
    if (!node || IsUnfilled(*node)) return;
    if (withFolders) {
        if (node->FirstChild() == nullptr) return;
        const _bstr_t name = ole::ToText(link.CallForObject(L"parent").Call(L"name"));
        const widgets::TreeNode* folder = pane_.Nodes().Holds(*node) ? node->FirstChild() : nullptr;
        while (folder != nullptr && folder->text != ole::ViewOf(name)) folder = folder->Next();
        if (folder == nullptr) return;
        node = pane_.Nodes().Find(folder->Number());
    }
    AddSubNode(link.CallForObject(L"Target"), Place{node, {}}, link);
}

void HierarchyTree::RemoveLink(const ole::Object& link) {
    const auto found = Infos().OfLink(link);
    const auto number = found ? found->key.Number() : std::nullopt;
    const widgets::NodePtr node = number ? pane_.Nodes().Find(*number) : nullptr;
    if (!node) return;
    pane_.WhileRemoving([&] { RemoveBranch(node); });
}

void HierarchyTree::RemoveBranch(const widgets::NodePtr& root) {
    const widgets::NodeStore& nodes = pane_.Nodes();
    widgets::NodePtr node = root;
    // The host may add and remove nodes, or let go of the tree, when it is told of others.
    while (nodes.Holds(*root)) {
        while (const widgets::TreeNode* const child = node->FirstChild()) {
            node = nodes.Find(child->Number());
        }
        const widgets::NodePtr parent = nodes.ParentOf(*node);
        if (const auto info = InfoOf(*node)) {
            pane_.RaiseRemoved(*info.Get());
            if (infos_) infos_->Remove(node->Number());
        }
        if (nodes.Holds(*node)) pane_.RemoveNode(*node);
        node = parent && nodes.Holds(*parent) ? parent : root;
    }
}

void HierarchyTree::Select(const ole::Object& object) {
    auto info = Infos().OfObject(object);
    if (!info) info = Infos().OfLink(object);
    const std::wstring key = info ? info->key.Text() : std::wstring();
    if (!key.empty()) pane_.SelectNode(FindNode(pane_, key));
}

void HierarchyTree::Expand(const ole::Object& object) {
    Select(object);
    if (const widgets::NodePtr selected = pane_.SelectedNode()) pane_.OpenNode(selected);
}

bool HierarchyTree::IsUnfilled(const widgets::TreeNode& node) const {
    const widgets::TreeNode* const first = node.FirstChild();
    return pane_.HasImage(first != nullptr ? *first : node, dummyImage);
}

void HierarchyTree::Fill(const widgets::NodePtr& node) {
    if (node->FirstChild() == nullptr) return;
    pane_.RemoveNode(*node->FirstChild());
    const auto info = InfoOf(*node);
    if (!info) return;
    pane_.RaiseExpand(*info.Get());
    const ole::Object object = info->RepObject();
    object.CallForObject(L"parent").CallForObject(L"Outgoing").Each([&](const ole::Object& ml) {
        Place place{node, {}};
        if (withFolders) place.node = AddFolder(HTMetaLinkFolder, ml, place);
        const _bstr_t name = ole::ToText(ml.Call(L"name"));
        object.CallForObject(L"Outgoing_", name).Each([&](const ole::Object& link) {
            AddSubNode(link.CallForObject(L"Target"), place, link);
        });
    });
}

ole::Ref<HTNodeInfo> HierarchyTree::InfoOf(const widgets::TreeNode& node) const {
    return infos_ ? infos_->Find(node.Number()) : nullptr;
}

ole::Ref<HTNodeInfo> HierarchyTree::InfoOf(std::wstring_view key) const {
    const auto number = NumberInAnyCase(key);
    return infos_ && number ? infos_->Find(*number) : nullptr;
}

ole::Ref<HTNodeInfo> HierarchyTree::InfoOfObject(const ole::Object& object) const {
    return Infos().OfEither(object);
}

ole::Ref<HTNodeInfo> HierarchyTree::ParentInfo(std::wstring_view key) const {
    const widgets::NodePtr parent = pane_.Nodes().ParentOf(*FindNode(pane_, key));
    if (!parent) return nullptr;
    auto info = Infos().Find(parent->Number());
    if (!info) ole::Throw(ole::Number::invalidCall);
    return info;
}

void HierarchyTree::Update(const ole::Ref<HTNodeInfo>& info, std::wstring_view caption,
                           std::wstring_view image) {
    if (!info) return;
    pane_.SetLook(*FindNode(pane_, info->key.Text()), caption, image);
}

}  // namespace trees
