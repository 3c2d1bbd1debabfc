#include "trees/tree_view.h"

#include <utility>

#include "trees/library_icons.h"

namespace trees {

namespace {

constexpr DISPID clickEvent = 1;
constexpr DISPID doubleClickEvent = 2;
constexpr ole::DragAndDrop::Events dragEvents = {
    .complete = 3, .drop = 4, .over = 5, .start = 6, .feedback = 7};

}  // namespace

TreeView::TreeView() : TreeControl(dragEvents, true), described_(*this) {
    tree_.onClick = [this](const widgets::NodePtr& node) { RaiseOfNode(clickEvent, node); };
    tree_.onDoubleClick = [this] {
        if (const widgets::NodePtr node = tree_.Selected()) RaiseOfNode(doubleClickEvent, node);
    };
}

TreeView::~TreeView() {
    // Objects that go may call back, while all of the control is there.
    described_.LetGo();
}

HRESULT TreeView::get_Repository(IDispatch** object) {
    return Run([&] { ole::Give(described_.repository, object); });
}

HRESULT TreeView::put_Repository(IDispatch** object) {
    return Run([&] {
        // What goes may call back: it finds the new one.
        const ole::Object before = std::exchange(described_.repository, ole::Object(*object));
    });
}

HRESULT TreeView::putref_Repository(IDispatch** object) {
    return put_Repository(object);
}

HRESULT TreeView::Create(VARIANT*) {
    return Change([&] {
        described_.RestartKeys();
        AddImage(DescribedTree::dummyImage, DummyIconPath());
        AddImage(DescribedTree::folderImage, FolderIconPath());
        Tree().SetImages(&images_);
        described_.ForgetInfos();
        tree_.SetEditsLabels(false);
        described_.MakeRoot();
    });
}

HRESULT TreeView::Destroy(VARIANT*) {
    return Run([&] {
        RemoveNodes();
        RemoveImages();
        described_.LetGo();
    });
}

HRESULT TreeView::ParentNode(BSTR* key, _NodeInfo** info) {
    return Run([&] { ole::Give(described_.ParentInfo(ole::ViewOf(*key)), info); });
}

HRESULT TreeView::get_selection(_NodeInfo** info) {
    return Run([&] {
        if (const widgets::NodePtr node = Tree().Selected())
            ole::Give(described_.InfoOf(*node), info);
    });
}

HRESULT TreeView::put_selection(IDispatch**) {
    return S_OK;
}

HRESULT TreeView::putref_selection(IDispatch**) {
    return S_OK;
}

HRESULT TreeView::SetBackGroundColor(long*, VARIANT*) {
    return S_OK;
}

HRESULT TreeView::AddIcon(BSTR* name, BSTR* iconPath, VARIANT*) {
    return Run([&] { AddImage(ole::ViewOf(*name), std::wstring(ole::ViewOf(*iconPath))); });
}

HRESULT TreeView::GetRootNodeDescription(_NodeDescription** description) {
    return Run([&] { ole::Give(described_.RootDescription(), description); });
}

bool TreeView::IsUnfilled(const widgets::TreeNode& node) const {
    return described_.IsUnfilled(node);
}

void TreeView::FillNode(const widgets::NodePtr& node) {
    described_.Fill(node);
}

ole::Object TreeView::InfoForEvent(const widgets::NodePtr& node) {
    return ole::Object(described_.InfoOf(*node).Get());
}

}  // namespace trees
