#include "explorer/linked_tree.h"

#include "explorer/automation.h"
#include "explorer/hosted.h"

namespace explorer {

namespace {

using hosting::LateBound;

// HTNodeType
constexpr long metaNodeFolder = 0;
constexpr long metaLinkFolder = 2;

bool IsFolder(long nodeType) {
    return nodeType == metaNodeFolder || nodeType == metaLinkFolder;
}

void Cancel(const hosting::Event& event) {
    const VARIANT& flag = event.Argument(0);
    if (flag.vt == (VT_BYREF | VT_I2)) *flag.piVal = VARIANT_TRUE;
}

}  // namespace

LinkedTree::LinkedTree(hosting::HostedControl& place, EventLog& log, IconFiles& icons,
                       const TreeCalls& calls, bool withFolders)
    : HostedTree(place, L"OrvaneControls.HierarchyTreeView", log, icons, calls) {
    Control().Put(L"withFolders", withFolders);
    Control().Put(L"LabelEdit", true);
}

void LinkedTree::Show(const LateBound&, const LateBound& metaNode) {
    Control().Call(L"AddExtension", metaNode.Get());
}

LateBound LinkedTree::NodeOf(const LateBound& info) const {
    return IsFolder(info.Get(L"NodeType")) ? LateBound() : info.Object(L"repObject");
}

LateBound LinkedTree::SelectedLink() const {
    const LateBound info = Control().Object(L"SelectionInfo");
    return info ? info.Object(L"repLink") : LateBound();
}

void LinkedTree::AddLink(const LateBound& link) {
    const LateBound source = link.Object(L"source");
    const LateBound info = Control().Object(L"GetInfoFromObject", source.Get());
    if (info) Control().Call(L"AddNode", info.Get(), link.Get());
}

void LinkedTree::RemoveLink(const LateBound& link) {
    Control().Call(L"RemoveLink", link.Get());
}

void LinkedTree::Hear(const hosting::Event& event) {
    if (event.name == L"AddingNode") return Propose(InfoOf(event, 0));
    if (event.name == L"BeforeLabelEdit") return BeginRename(event);
    if (event.name == L"AfterLabelEdit") return EndRename(event);
    if (event.name != L"NodeClick") return;
    const LateBound info = InfoOf(event, 0);
    if (info) Calls().onChoice(ChoiceOf(info));
}

void LinkedTree::Propose(const LateBound& proposal) {
    using Frame = Badge::Frame;
    const long kind = proposal.Get(L"NodeType");
    if (kind == metaLinkFolder) return;
    const LateBound object = proposal.Object(L"repObject");
    if (kind == metaNodeFolder) {
        const std::wstring type = TextOf(object.Get(L"name"));
        return proposal.Put(L"Image", IconKey(TypeBadge(type, Frame::square)).c_str());
    }
    const std::wstring type = TextOf(object.Object(L"parent").Get(L"name"));
    proposal.Put(L"Caption", CaptionOf(object).c_str());
    proposal.Put(L"Image", IconKey(TypeBadge(type, Frame::disc)).c_str());
    proposal.Put(L"Allowed", true);
}

TreeChoice LinkedTree::ChoiceOf(const LateBound& info) const {
    using Kind = TreeChoice::Kind;
    const LateBound object = info.Object(L"repObject");
    switch (static_cast<long>(info.Get(L"NodeType"))) {
        case metaNodeFolder:
            return {Kind::metaNode, object, {}};
        case metaLinkFolder: {
            const std::wstring key = TextOf(info.Get(L"key"));
            const LateBound parent = Control().Object(L"ParentNode", key.c_str());
            return {Kind::metaLink, object, parent ? NodeOf(parent) : LateBound()};
        }
        default:
            return {Kind::node, object, {}};
    }
}

void LinkedTree::BeginRename(const hosting::Event& event) const {
    const LateBound info = InfoOf(event, 1);
    if (!info || !NodeOf(info)) Cancel(event);
}

/// A name that the repository refuses leaves the node as it was.
void LinkedTree::EndRename(const hosting::Event& event) {
    const LateBound info = InfoOf(event, 1);
    const LateBound node = info ? NodeOf(info) : LateBound();
    if (!node) return Cancel(event);
    try {
        node.Put(L"name", TextOf(ArgumentOf(event, 2)).c_str());
    } catch (...) {
        Cancel(event);
        throw;
    }
    Calls().onRename(node);
}

}  // namespace explorer
