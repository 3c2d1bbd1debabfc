#include "trees/hierarchy_tree_view.h"

#include "ole/finally.h"
#include "ole/units.h"
#include "trees/library_icons.h"

namespace trees {

namespace {

constexpr DISPID clickEvent = 1;
constexpr DISPID checkEvent = 2;
constexpr DISPID rightClickEvent = 3;
constexpr DISPID doubleClickEvent = 4;
constexpr DISPID afterEditEvent = 5;
constexpr DISPID beforeEditEvent = 6;
constexpr DISPID addingEvent = 7;
constexpr DISPID expandEvent = 8;
constexpr DISPID collapseEvent = 9;
constexpr DISPID removedEvent = 10;
constexpr ole::DragAndDrop::Events dragEvents = {
    .complete = 11, .drop = 12, .over = 13, .start = 14, .feedback = 15};

constexpr long indentInTwips = 250;

}  // namespace

HierarchyTreeView::HierarchyTreeView() : TreeControl(dragEvents, false), hierarchy_(*this) {
    const auto raises = [this](DISPID event) {
        return [this, event](const widgets::NodePtr& node) { RaiseOfNode(event, node); };
    };
    tree_.onClick = raises(clickEvent);
    tree_.onChecked = raises(checkEvent);
    tree_.onRightDown = raises(rightClickEvent);
    tree_.onClosed = raises(collapseEvent);
    tree_.onDoubleClick = [this] { RaiseOfNode(doubleClickEvent, tree_.Selected()); };
    tree_.onBeginEdit = [this] { return RaiseBeforeEdit(); };
    tree_.onEndEdit = [this](const widgets::NodePtr& node, std::wstring& text) {
        return RaiseAfterEdit(node, text);
    };
}

HierarchyTreeView::~HierarchyTreeView() {
    // Objects that go may call back, while all of the control is there.
    hierarchy_.LetGo();
}

HRESULT HierarchyTreeView::Create(VARIANT*) {
    return Run([&] {
        hierarchy_.ForgetInfos();
        icons_.emplace();
        MakeIcon(ole::ToBstr(HierarchyTree::dummyImage), ole::ToBstr(DummyIconPath()));
        MakeIcon(ole::ToBstr(HierarchyTree::folderImage), ole::ToBstr(FolderIconPath()));
        Tree().SetImages(&images_);
        tree_.Enable(true);
        tree_.SetIndent(ole::TwipsToPixels(indentInTwips, Dpi()));
        tree_.SetEditsLabels(false);
    });
}

HRESULT HierarchyTreeView::Init(VARIANT*) {
    return S_OK;
}

HRESULT HierarchyTreeView::Deinit(VARIANT*) {
    return S_OK;
}

HRESULT HierarchyTreeView::Destroy(VARIANT*) {
    return Run([&] {
        hierarchy_.LetGo();
        icons_.reset();
    });
}

HRESULT HierarchyTreeView::AddIcon(BSTR* name, BSTR* iconPath, _HTIcon** icon) {
    return Run([&] { ole::Give(MakeIcon(ole::ToBstr(*name), ole::ToBstr(*iconPath)), icon); });
}

ole::Ref<HTIcon> HierarchyTreeView::MakeIcon(const _bstr_t& name, const _bstr_t& path) {
    AddImage(ole::ViewOf(name), ole::ToWide(path));
    auto icon = ole::Make<HTIcon>();
    icon->name = name;
    icon->path = path;
    if (!icons_) ole::Throw(ole::Number::objectNotSet);
    icons_->Add(_variant_t(static_cast<IDispatch*>(icon.Get())), ole::ToWide(name));
    return icon;
}

HRESULT HierarchyTreeView::GetIcon(BSTR* name, IDispatch** picture) {
    return Run([&] {
        try {
            const widgets::Picture icon = images_.PictureAt(images_.Find(ole::ViewOf(*name)));
            ole::Query<IDispatch>(icon.Get()).CopyTo(picture);
        } catch (...) {
            // No such icon: Nothing.
        }
    });
}

HRESULT HierarchyTreeView::get_withFolders(VARIANT_BOOL* setting) {
    return Give(hierarchy_.withFolders, setting);
}

HRESULT HierarchyTreeView::put_withFolders(VARIANT_BOOL* setting) {
    return Run([&] { hierarchy_.withFolders = *setting != VARIANT_FALSE; });
}

HRESULT HierarchyTreeView::AddNodeInfo(IDispatch** repObject, _HTNewNodeInfo** nni,
                                       IDispatch** repLink, _HTNodeInfo** info) {
    return Change([&] {
        const auto proposal = ole::OwnRecord<HTNewNodeInfo>(*nni);
        ole::Give(hierarchy_.Propose(*repObject, proposal, *repLink), info);
    });
}

HRESULT HierarchyTreeView::AddRootNode(IDispatch** repObject, VARIANT* root, VARIANT*) {
    return Change([&] { hierarchy_.AddRoot(*repObject, *root); });
}

HRESULT HierarchyTreeView::AddExtension(IDispatch** MO, VARIANT*) {
    return Change([&] { hierarchy_.AddExtension(*MO); });
}

HRESULT HierarchyTreeView::AddSubNode(IDispatch** repObject, VARIANT* parent, IDispatch** repLink,
                                      VARIANT*) {
    return Change([&] { hierarchy_.AddSubNode(*repObject, *parent, *repLink); });
}

HRESULT HierarchyTreeView::AddSubNodeToCurrent(IDispatch** repObject, IDispatch** repLink,
                                               VARIANT*) {
    return Change([&] { hierarchy_.AddSubNodeToCurrent(*repObject, *repLink); });
}

HRESULT HierarchyTreeView::AddNode(_HTNodeInfo** parent, IDispatch** link, VARIANT*) {
    return Change([&] { hierarchy_.AddNode(ole::OwnRecord<HTNodeInfo>(*parent), *link); });
}

HRESULT HierarchyTreeView::Expand(IDispatch** repObject, VARIANT*) {
    return Change([&] { hierarchy_.Expand(*repObject); });
}

HRESULT HierarchyTreeView::GetNodeInfo(BSTR* key, _HTNodeInfo** info) {
    return Run([&] { ole::Give(hierarchy_.InfoOf(ole::ViewOf(*key)), info); });
}

HRESULT HierarchyTreeView::GetInfoFromObject(IDispatch** repObject, _HTNodeInfo** info) {
    return Run([&] { ole::Give(hierarchy_.InfoOfObject(*repObject), info); });
}

HRESULT HierarchyTreeView::ParentNode(BSTR* key, _HTNodeInfo** info) {
    return Run([&] { ole::Give(hierarchy_.ParentInfo(ole::ViewOf(*key)), info); });
}

HRESULT HierarchyTreeView::Update(_HTNodeInfo** ni, BSTR* Caption, BSTR* Image, VARIANT*) {
    return Run([&] {
        hierarchy_.Update(ole::OwnRecord<HTNodeInfo>(*ni), ole::ViewOf(*Caption),
                          ole::ViewOf(*Image));
    });
}

HRESULT HierarchyTreeView::get_Checkboxes(VARIANT_BOOL* setting) {
    return Give(tree_.HasCheckBoxes(), setting);
}

HRESULT HierarchyTreeView::put_Checkboxes(VARIANT_BOOL* setting) {
    return Run([&] { Tree().SetCheckBoxes(*setting != VARIANT_FALSE); });
}

HRESULT HierarchyTreeView::get_LabelEdit(VARIANT_BOOL* setting) {
    return Give(tree_.EditsLabels(), setting);
}

HRESULT HierarchyTreeView::put_LabelEdit(VARIANT_BOOL* setting) {
    return Run([&] { Tree().SetEditsLabels(*setting != VARIANT_FALSE); });
}

HRESULT HierarchyTreeView::get_selection(IDispatch** object) {
    return Run([&] {
        const widgets::NodePtr node = Tree().Selected();
        const auto info = node ? hierarchy_.InfoOf(*node) : nullptr;
        if (info) ole::Give(info->RepObject(), object);
    });
}

HRESULT HierarchyTreeView::put_selection(IDispatch** object) {
    return Run([&] { hierarchy_.Select(*object); });
}

HRESULT HierarchyTreeView::putref_selection(IDispatch** object) {
    return put_selection(object);
}

HRESULT HierarchyTreeView::get_SelectionInfo(_HTNodeInfo** info) {
    return Run([&] {
        if (const widgets::NodePtr node = Tree().Selected())
            ole::Give(hierarchy_.InfoOf(*node), info);
    });
}

HRESULT HierarchyTreeView::RemoveLink(IDispatch** link, VARIANT*) {
    return Run([&] { hierarchy_.RemoveLink(*link); });
}

bool HierarchyTreeView::IsUnfilled(const widgets::TreeNode& node) const {
    return hierarchy_.IsUnfilled(node);
}

void HierarchyTreeView::FillNode(const widgets::NodePtr& node) {
    hierarchy_.Fill(node);
}

ole::Object HierarchyTreeView::InfoForEvent(const widgets::NodePtr& node) {
    return node ? ole::Object(hierarchy_.InfoOf(*node).Get()) : ole::Object();
}

widgets::NodePtr HierarchyTreeView::SelectedNode() {
    return Tree().Selected();
}

void HierarchyTreeView::SelectNode(const widgets::NodePtr& node) {
    Tree().Select(node);
}

void HierarchyTreeView::OpenNode(const widgets::NodePtr& node) {
    Tree().Open(node);
}

void HierarchyTreeView::SetLook(widgets::TreeNode& node, std::wstring_view text,
                                std::wstring_view image) {
    node.text = text;
    const ole::Finally shows([&] { tree_.ShowAgain(node); });
    if (!image.empty()) node.image = images_.Find(image);
}

void HierarchyTreeView::WhileRemoving(const std::function<void()>& work) {
    const widgets::NodeTree::Removing removing(tree_);
    work();
}

void HierarchyTreeView::RaiseAdding(HTNewNodeInfo& proposal) {
    RaiseOfInfo(addingEvent, &proposal);
}

void HierarchyTreeView::RaiseExpand(HTNodeInfo& info) {
    RaiseOfInfo(expandEvent, &info);
}

void HierarchyTreeView::RaiseRemoved(HTNodeInfo& info) {
    RaiseOfInfo(removedEvent, &info);
}

void HierarchyTreeView::RaiseOfInfo(DISPID event, IDispatch* info) {
    ole::ObjectVariable variable{ole::Object(info)};
    VARIANT argument = variable.ByReference();
    Fire(event, &argument, 1);
}

bool HierarchyTreeView::RaiseBeforeEdit() {
    short cancel = 0;
    ole::ObjectVariable info(InfoForEvent(tree_.Selected()));
    VARIANT arguments[] = {ole::ByReference(cancel), info.ByReference()};
    Fire(beforeEditEvent, arguments, 2);
    return cancel == 0;
}

bool HierarchyTreeView::RaiseAfterEdit(const widgets::NodePtr& node, std::wstring& text) {
    short cancel = 0;
    ole::ObjectVariable info(InfoForEvent(node));
    ole::TextVariable edited(text);
    VARIANT arguments[] = {ole::ByReference(cancel), info.ByReference(), edited.ByReference()};
    Fire(afterEditEvent, arguments, 3);
    text = ole::ViewOf(edited.Get());
    return cancel == 0;
}

}  // namespace trees
