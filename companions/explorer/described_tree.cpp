#include "explorer/described_tree.h"

#include "explorer/automation.h"

namespace explorer {

namespace {

using hosting::LateBound;

// How the keys of the folders' descriptions begin; what they stand for follows.
constexpr std::wstring_view typeFolder = L"type ";
constexpr std::wstring_view linkFolder = L"link ";

constexpr wchar_t folderIcon[] = L"Folder";

LateBound AddChild(const LateBound& description, const wchar_t* kind,
                   const std::wstring& objectType, const std::wstring& caption,
                   const std::wstring& icon, const std::wstring& key) {
    return description.Object(L"AddChild", kind, objectType.c_str(), caption.c_str(), icon.c_str(),
                              key.c_str());
}

bool HasNodes(const LateBound& metaNode) {
    return static_cast<long>(metaNode.Object(L"Extension").Get(L"Count")) > 0;
}

}  // namespace

DescribedTree::DescribedTree(hosting::HostedControl& place, EventLog& log, IconFiles& icons,
                             const TreeCalls& calls)
    : HostedTree(place, L"OrvaneControls.TreeView", log, icons, calls) {}

void DescribedTree::Show(const LateBound& repository, const LateBound&) {
    Control().PutRef(L"Repository", repository.Get());
    const LateBound root = Control().Object(L"GetRootNodeDescription");
    ForEach(repository.Object(L"MetaNodes"), [&](const LateBound& metaNode) {
        if (!IsBuiltIn(metaNode) && HasNodes(metaNode)) Describe(root, metaNode);
        return true;
    });
}

void DescribedTree::Describe(const LateBound& root, const LateBound& metaNode) {
    using Frame = Badge::Frame;
    const std::wstring name = TextOf(metaNode.Get(L"name"));
    const std::wstring icon = IconKey(TypeBadge(name, Frame::square));
    const LateBound folder =
        AddChild(root, L"Folder", name, name, icon, std::wstring(typeFolder) + name);
    const LateBound nodes = AddChild(folder, L"Extension", name, L"Name",
                                     IconKey(TypeBadge(name, Frame::disc)), L"nodes");
    ForEach(metaNode.Object(L"Outgoing"), [&](const LateBound& metaLink) {
        const std::wstring link = TextOf(metaLink.Get(L"name"));
        const std::wstring target = TextOf(metaLink.Object(L"Target").Get(L"name"));
        const LateBound links =
            AddChild(nodes, L"Folder", link, link, folderIcon, std::wstring(linkFolder) + link);
        AddChild(links, L"Links", link, L"", IconKey(TypeBadge(target, Frame::disc)), L"targets");
        return true;
    });
}

LateBound DescribedTree::NodeOf(const LateBound& info) const {
    return info.Object(L"repObject");
}

void DescribedTree::Hear(const hosting::Event& event) {
    if (event.name != L"NodeClick") return;
    const LateBound info = InfoOf(event, 0);
    if (!info) return;
    const TreeChoice choice = ChoiceOf(info);
    if (choice.object) Calls().onChoice(choice);
}

TreeChoice DescribedTree::ChoiceOf(const LateBound& info) const {
    using Kind = TreeChoice::Kind;
    if (const LateBound node = NodeOf(info)) return {Kind::node, node, {}};
    const LateBound description = info.Object(L"NodeDescription");
    const std::wstring key = TextOf(description.Get(L"key"));
    const std::wstring what = TextOf(description.Get(L"objectType"));
    const LateBound repository = Control().Object(L"Repository");
    if (key.starts_with(typeFolder)) {
        return {Kind::metaNode, repository.Object(L"MetaNodes", what.c_str()), {}};
    }
    if (!key.starts_with(linkFolder)) return {};
    const LateBound parent = Control().Object(L"ParentNode", TextOf(info.Get(L"key")).c_str());
    return {Kind::metaLink, repository.Object(L"MetaLinks", what.c_str()), NodeOf(parent)};
}

}  // namespace explorer
