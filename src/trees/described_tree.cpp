#include "trees/described_tree.h"

#include <utility>

#include "ole/text.h"

namespace trees {

void DescribedTree::ForgetInfos() {
    // What goes may call back: it finds the new ones.
    const auto before = std::exchange(infos_, std::make_shared<Infos>());
}

void DescribedTree::MakeRoot() {
    const widgets::NodePtr root = pane_.AddNode(rootNumber, nullptr, L"Root", folderImage);
    const auto description = ole::Make<NodeDescription>();
    description->key = ole::ToBstr(KeyOf(NextNumber(counter_)));
    description->typ = L"ROOT";
    AddInfo(rootNumber, description, {});
    AddPlaceholder(pane_, counter_, root, dummyImage);
}

void DescribedTree::LetGo() {
    const auto infos = std::exchange(infos_, nullptr);
    const ole::Object before = std::exchange(repository, {});
}

bool DescribedTree::IsUnfilled(const widgets::TreeNode& node) const {
    return node.FirstChild() != nullptr && pane_.HasImage(*node.FirstChild(), dummyImage);
}

void DescribedTree::Fill(const widgets::NodePtr& node) {
    pane_.RemoveNode(*node->FirstChild());
    const ole::Ref<NodeDescription> description = InfoOf(*node)->description;
    if (!description) ole::Throw(ole::Number::objectNotSet);
    // The host may describe more meanwhile; this level goes on with what it began with.
    const auto children = description->Children().Snapshot();
    for (const auto& child : *children) {
        FillFrom(node, ole::OwnRecord<NodeDescription>(ole::Object::From(child->value).Get()));
    }
}

void DescribedTree::FillFrom(const widgets::NodePtr& node,
                             const ole::Ref<NodeDescription>& description) {
    if (!description) ole::Throw(ole::Number::objectNotSet);
    const std::wstring_view typ = ole::ViewOf(description->typ);
    if (typ == L"Folder") {
        const _bstr_t text = description->caption;
        Add(NextNumber(counter_), node, ole::ViewOf(text), description, {});
    } else if (typ == L"Extension") {
        AddExtension(node, description);
    } else if (typ == L"Links") {
        AddLinks(node, description);
    }
}

void DescribedTree::AddExtension(const widgets::NodePtr& node,
                                 const ole::Ref<NodeDescription>& description) {
    const ole::Object root = repository;
    // Whoever is called may write to the description.
    const _bstr_t type = description->objectType;
    const ole::Object metaNode = root.CallForObject(L"MetaNodes", type);
    metaNode.CallForObject(L"Extension").Each([&](const ole::Object& object) {
        const std::int32_t number = NextNumber(counter_);
        const _bstr_t property = description->caption;
        _variant_t text = object.Call(L"GetProperty", property);
        ole::MakeText(text);
        Add(number, node, ole::ViewOf(V_BSTR(&text)), description, object);
    });
}

void DescribedTree::AddLinks(const widgets::NodePtr& node,
                             const ole::Ref<NodeDescription>& description) {
    const widgets::NodePtr owner = pane_.Nodes().ParentOf(*node);
    if (!owner) ole::Throw(ole::Number::objectNotSet);
    const ole::Object object = InfoOf(*owner)->repObject;
    const _bstr_t metaLink = description->objectType;
    object.CallForObject(L"Outgoing_", metaLink).Each([&](const ole::Object& link) {
        const ole::Object target = link.CallForObject(L"Target");
        const std::int32_t number = NextNumber(counter_);
        _variant_t text = target.Call(L"name");
        ole::MakeText(text);
        Add(number, node, ole::ViewOf(V_BSTR(&text)), description, target);
    });
}

void DescribedTree::Add(std::int32_t number, const widgets::NodePtr& parent, std::wstring_view text,
                        const ole::Ref<NodeDescription>& description, const ole::Object& object) {
    const widgets::NodePtr node =
        pane_.AddNode(number, parent, text, ole::ViewOf(description->picture));
    AddInfo(number, description, object);
    if (description->Children().Count() > 0) AddPlaceholder(pane_, counter_, node, dummyImage);
}

void DescribedTree::AddInfo(std::int32_t number, const ole::Ref<NodeDescription>& description,
                            const ole::Object& object) {
    if (!infos_) ole::Throw(ole::Number::objectNotSet);
    const auto info = ole::Make<NodeInfo>();
    info->key.SetNumber(number);
    info->description = description;
    info->repObject = object;
    if (!infos_->Add(number, info)) ole::Throw(ole::Number::keyInUse);
}

ole::Ref<NodeInfo> DescribedTree::InfoOf(const widgets::TreeNode& node) const {
    if (!infos_) ole::Throw(ole::Number::objectNotSet);
    auto info = infos_->Find(node.Number());
    if (!info) ole::Throw(ole::Number::invalidCall);
    return info;
}

ole::Ref<NodeInfo> DescribedTree::ParentInfo(std::wstring_view key) const {
    const widgets::NodePtr parent = pane_.Nodes().ParentOf(*FindNode(pane_, key));
    return parent ? InfoOf(*parent) : nullptr;
}

ole::Ref<NodeDescription> DescribedTree::RootDescription() const {
    const widgets::NodePtr root = pane_.Nodes().Find(rootNumber);
    if (!root) ole::Throw(ole::Number::elementNotFound);
    return InfoOf(*root)->description;
}

}  // namespace trees
