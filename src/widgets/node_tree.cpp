#include "widgets/node_tree.h"

#include <algorithm>
#include <utility>

#include "ole/error.h"
#include "ole/server.h"
#include "ole/theme.h"
#include "widgets/raised.h"

namespace widgets {

/// The window draws nothing for a moment. What waits for the end of a message does not come up in
/// it.
class NodeTree::Still {
public:
    explicit Still(const NodeTree& tree) : tree_(tree) { tree_.Send(WM_SETREDRAW, FALSE); }
    ~Still() { tree_.Send(WM_SETREDRAW, TRUE); }
    Still(const Still&) = delete;
    Still& operator=(const Still&) = delete;

private:
    const NodeTree& tree_;
};

NodeTree::~NodeTree() {
    if (handle_ == nullptr) return;
    SetWindowLongPtrW(handle_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(system_));
    SetWindowLongPtrW(handle_, GWLP_USERDATA, 0);
    DestroyWindow(handle_);
}

void NodeTree::Create(HWND parent) {
    const ole::ThemedScope themed;
    constexpr DWORD style =
        WS_CHILD | WS_VISIBLE | WS_TABSTOP | TVS_HASLINES | TVS_HASBUTTONS | TVS_SHOWSELALWAYS;
    handle_ = CreateWindowExW(WS_EX_CLIENTEDGE, WC_TREEVIEWW, L"",
                              style | (linesAtRoot_ ? DWORD{TVS_LINESATROOT} : 0) |
                                  (editsLabels_ ? DWORD{TVS_EDITLABELS} : 0) |
                                  (drags_ ? 0 : DWORD{TVS_DISABLEDRAGDROP}),
                              0, 0, 0, 0, parent, nullptr, ole::ModuleHandle(), nullptr);
    if (handle_ == nullptr) ole::Check(HRESULT_FROM_WIN32(GetLastError()));
    SetWindowLongPtrW(handle_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    system_ = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(handle_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure)));
    EnableWindow(handle_, enabled_);
    if (checkBoxes_) SetCheckBoxes(true);
    SetImages(images_);
    // Pictures may bring an indentation of their own.
    if (indent_ != 0) SetIndent(indent_);
    ForgetItems();
    InsertLevel(nodes_.Top());
    std::vector<NodePtr> open;
    nodes_.Each([&](TreeNode& node) {
        if (std::exchange(node.expanded, false)) open.push_back(nodes_.Find(node.Number()));
    });
    for (const NodePtr& node : open) {
        Show(*node);
        InsertLevel(*node);
        Send(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(ItemOf(*node)));
        node->expanded = true;
    }
    const auto selected = std::exchange(selectedBefore_, std::nullopt);
    if (const NodePtr node = selected ? nodes_.Find(*selected) : nullptr) {
        SelectItem(*node);
    }
}

LRESULT NodeTree::Send(UINT message, WPARAM wide, LPARAM large) const {
    if (handle_ == nullptr) return 0;
    ++depth_;
    const LRESULT answer = CallWindowProcW(system_, handle_, message, wide, large);
    --depth_;
    return answer;
}

void NodeTree::SetStyle(DWORD style, bool on) const {
    const auto now = static_cast<DWORD>(GetWindowLongW(handle_, GWL_STYLE));
    SetWindowLongW(handle_, GWL_STYLE, static_cast<LONG>(on ? now | style : now & ~style));
}

HTREEITEM NodeTree::ItemOrRoot(const TreeNode& node) const {
    return &node == &nodes_.Top() ? TVI_ROOT : ItemOf(node);
}

NodePtr NodeTree::NodeOf(HTREEITEM item) const {
    if (item == nullptr) return nullptr;
    TVITEMW asked = {};
    asked.mask = TVIF_PARAM | TVIF_HANDLE;
    asked.hItem = item;
    if (!Send(TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&asked))) return nullptr;
    const NodePtr node = nodes_.Find(static_cast<std::int32_t>(asked.lParam));
    return node && node->item == item ? node : nullptr;
}

NodePtr NodeTree::Add(std::int32_t number, TreeNode* parent) {
    TreeNode& place = parent != nullptr ? *parent : nodes_.Top();
    const NodePtr node = nodes_.Add(number, place);
    if (node && !place.childrenWait) {
        place.childrenWait = true;
        if (&place == &nodes_.Top() || place.item != nullptr) waiting_.push_back(place.Number());
    }
    return node;
}

void NodeTree::Sync() {
    if (handle_ == nullptr) return;
    for (const std::int32_t number : std::exchange(waiting_, {})) {
        const NodePtr found = nodes_.Find(number);
        TreeNode* const parent = number == nodes_.Top().Number() ? &nodes_.Top() : found.get();
        if (parent == nullptr || !parent->childrenWait) continue;
        if (IsOpenInWindow(*parent))
            InsertLevel(*parent);
        else
            ShowAgain(*parent);
    }
}

bool NodeTree::IsOpenInWindow(const TreeNode& node) const {
    if (&node == &nodes_.Top()) return true;
    const auto item = reinterpret_cast<WPARAM>(ItemOf(node));
    return item != 0 && (Send(TVM_GETITEMSTATE, item, TVIS_EXPANDED) & TVIS_EXPANDED) != 0;
}

void NodeTree::InsertLevel(TreeNode& parent) {
    if (!parent.childrenWait) return;
    parent.childrenWait = false;
    const HTREEITEM place = ItemOrRoot(parent);
    TreeNode* before = parent.LastChild();
    while (before != nullptr && before->item == nullptr) before = before->Previous();
    TreeNode* const first = before != nullptr ? before->Next() : parent.FirstChild();
    if (first == nullptr) return;
    if (IsOpenInWindow(parent)) {
        const Still still(*this);
        // Where the level is seen, the system works out the lines below each new one.
        HTREEITEM after = before != nullptr ? ItemOf(*before) : TVI_FIRST;
        for (TreeNode* node = first; node != nullptr; node = node->Next()) {
            after = Insert(*node, place, after);
        }
    } else {
        // Backwards at one place: no system looks for the place again.
        const HTREEITEM after = before != nullptr ? ItemOf(*before) : TVI_FIRST;
        for (TreeNode* node = parent.LastChild(); node != before; node = node->Previous()) {
            Insert(*node, place, after);
        }
    }
}

HTREEITEM NodeTree::Insert(TreeNode& node, HTREEITEM parent, HTREEITEM after) const {
    TVINSERTSTRUCTW insert = {};
    insert.hParent = parent;
    insert.hInsertAfter = after;
    TVITEMW& item = insert.item;
    // Whole, not to be asked for later: a system that measures its items asks for all of them.
    item = LookOf(node);
    item.mask |= TVIF_PARAM;
    item.lParam = node.Number();
    if (checkBoxes_) {
        item.mask |= TVIF_STATE;
        item.stateMask = TVIS_STATEIMAGEMASK;
        item.state = CheckBoxState(true, node.checked);
    }
    const auto made =
        reinterpret_cast<HTREEITEM>(Send(TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
    if (made == nullptr) ole::Check(E_OUTOFMEMORY);
    node.item = made;
    return made;
}

void NodeTree::Show(TreeNode& node) {
    std::vector<TreeNode*> way;
    for (TreeNode* at = &node; at->item == nullptr && at != &nodes_.Top();) {
        at = &nodes_.PlaceOf(*at);
        way.push_back(at);
    }
    std::for_each(way.rbegin(), way.rend(), [this](TreeNode* at) { InsertLevel(*at); });
}

void NodeTree::Remove(TreeNode& node) {
    TreeNode& place = nodes_.PlaceOf(node);
    Doom(node);
    nodes_.Remove(node);
    if (place.FirstChild() == nullptr) {
        place.childrenWait = false;
        ShowAgain(place);
    }
    RemoveDoomed();
}

void NodeTree::Clear() {
    for (TreeNode* node = nodes_.Top().FirstChild(); node != nullptr; node = node->Next()) {
        Doom(*node);
    }
    nodes_.Clear();
    nodes_.Top().childrenWait = false;
    waiting_.clear();
    selectedBefore_.reset();
    if (depth_ == 0 && removing_ == 0) {
        doomed_.clear();
        EndEditing();
        const Still still(*this);
        Send(TVM_SELECTITEM, TVGN_CARET, 0);
        Send(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    }
}

void NodeTree::Doom(TreeNode& node) {
    if (node.item == nullptr) return;
    const HTREEITEM item = ItemOf(node);
    // Those right below that were doomed before go with it.
    while (!doomed_.empty() && doomed_.back().parent == item) doomed_.pop_back();
    doomed_.push_back({item, ItemOrRoot(nodes_.PlaceOf(node))});
}

void NodeTree::RemoveDoomed() {
    if (depth_ != 0 || removing_ != 0 || doomed_.empty()) return;
    const std::vector<Doomed> doomed = std::exchange(doomed_, {});
    EndEditing();
    std::optional<Still> still;
    if (doomed.size() > 1) still.emplace(*this);
    for (const Doomed& each : doomed) {
        Send(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(each.item));
    }
}

void NodeTree::EndEditing() {
    if (Send(TVM_GETEDITCONTROL) != 0) Send(TVM_ENDEDITLABELNOW, TRUE);
}

void NodeTree::ForgetItems() {
    doomed_.clear();
    waiting_.clear();
    const auto forget = [](TreeNode& node) {
        node.item = nullptr;
        node.childrenWait = node.FirstChild() != nullptr;
    };
    nodes_.Each(forget);
    forget(nodes_.Top());
}

TVITEMW NodeTree::LookOf(TreeNode& node) {
    TVITEMW item = {};
    item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_CHILDREN;
    item.pszText = node.text.data();
    item.iImage = item.iSelectedImage = node.image == TreeNode::noImage ? I_IMAGENONE : node.image;
    item.cChildren = node.FirstChild() != nullptr ? 1 : 0;
    return item;
}

void NodeTree::ShowAgain(TreeNode& node) {
    if (node.item == nullptr) return;
    TVITEMW item = LookOf(node);
    item.mask |= TVIF_HANDLE;
    item.hItem = ItemOf(node);
    Send(TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void NodeTree::Check(TreeNode& node, bool checked) {
    node.checked = checked;
    if (checkBoxes_) ShowBox(node, true);
}

void NodeTree::ShowBox(const TreeNode& node, bool shown) const {
    if (node.item == nullptr) return;
    TVITEMW item = {};
    item.mask = TVIF_STATE | TVIF_HANDLE;
    item.hItem = ItemOf(node);
    item.stateMask = TVIS_STATEIMAGEMASK;
    item.state = CheckBoxState(shown, node.checked);
    Send(TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void NodeTree::CheckAll(bool checked) {
    const Still still(*this);
    nodes_.Each([&](TreeNode& node) { Check(node, checked); });
}

NodePtr NodeTree::Selected() const {
    return NodeOf(reinterpret_cast<HTREEITEM>(Send(TVM_GETNEXTITEM, TVGN_CARET)));
}

void NodeTree::Select(const NodePtr& node) {
    std::vector<NodePtr> above;
    for (NodePtr at = nodes_.ParentOf(*node); at; at = nodes_.ParentOf(*at)) above.push_back(at);
    std::for_each(above.rbegin(), above.rend(), [this](const NodePtr& each) {
        if (nodes_.Holds(*each) && !IsOpenInWindow(*each)) Open(each);
    });
    if (!nodes_.Holds(*node)) return;
    if (handle_ == nullptr) {
        // It went while nodes were filled.
        selectedBefore_ = node->Number();
        return;
    }
    SelectItem(*node);
}

void NodeTree::SelectItem(TreeNode& node) {
    Show(node);
    Send(TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(ItemOf(node)));
}

void NodeTree::Fill(const NodePtr& node) {
    try {
        if (isUnfilled(*node)) onFill(node);
    } catch (...) {
        // What was made before stays, and can be opened.
        Sync();
        if (handle_ != nullptr && nodes_.Holds(*node)) ShowAgain(*node);
        throw;
    }
    Sync();
}

void NodeTree::Open(const NodePtr& node) {
    Fill(node);
    if (!nodes_.Holds(*node) || node->FirstChild() == nullptr || handle_ == nullptr) return;
    Show(*node);
    InsertLevel(*node);
    const Raised opening(opening_);
    Send(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(ItemOf(*node)));
    node->expanded = true;
}

NodePtr NodeTree::HitTest(POINT screen) {
    TVHITTESTINFO hit = {};
    hit.pt = screen;
    ScreenToClient(handle_, &hit.pt);
    Send(TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    return (hit.flags & TVHT_ONITEM) != 0 ? NodeOf(hit.hItem) : nullptr;
}

void NodeTree::SetCheckBoxes(bool shown) {
    checkBoxes_ = shown;
    if (handle_ == nullptr) return;
    const Still still(*this);
    const HIMAGELIST list = shown ? checkBoxImages_.Get(handle_) : nullptr;
    Send(TVM_SETIMAGELIST, TVSIL_STATE, reinterpret_cast<LPARAM>(list));
    nodes_.Each([&](const TreeNode& node) { ShowBox(node, shown); });
}

void NodeTree::SetEditsLabels(bool edits) {
    editsLabels_ = edits;
    if (handle_ != nullptr) SetStyle(TVS_EDITLABELS, edits);
}

void NodeTree::SetDrags(bool drags) {
    drags_ = drags;
    if (handle_ != nullptr) SetStyle(TVS_DISABLEDRAGDROP, !drags);
}

void NodeTree::SetIndent(int indent) {
    indent_ = indent;
    Send(TVM_SETINDENT, static_cast<WPARAM>(indent));
}

void NodeTree::SetImages(const ImageLists* images) {
    images_ = images;
    Send(TVM_SETIMAGELIST, TVSIL_NORMAL,
         reinterpret_cast<LPARAM>(images != nullptr ? images->Small() : nullptr));
    FitRows();
}

void NodeTree::Enable(bool enabled) {
    enabled_ = enabled;
    if (handle_ != nullptr) EnableWindow(handle_, enabled);
    Send(TVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(ShownTextColor()));
}

void NodeTree::SetColors(COLORREF text, COLORREF background) {
    textColor_ = text;
    background_ = background;
    Send(TVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(ShownTextColor()));
    Send(TVM_SETBKCOLOR, 0, static_cast<LPARAM>(background));
}

COLORREF NodeTree::ShownTextColor() const {
    return enabled_ ? textColor_ : GetSysColor(COLOR_GRAYTEXT);
}

void NodeTree::SetFont(HFONT font) {
    font_ = font;
    Send(WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    FitRows();
}

void NodeTree::FitRows() {
    int width = 0;
    int height = 0;
    if (images_ != nullptr && images_->Small() != nullptr)
        ImageList_GetIconSize(images_->Small(), &width, &height);
    constexpr auto natural = static_cast<WPARAM>(-1);
    Send(TVM_SETITEMHEIGHT, natural);
    // Icons that touch leave traces on each other when nodes move.
    const int wanted = height + 2;
    if (Send(TVM_GETITEMHEIGHT) < wanted) Send(TVM_SETITEMHEIGHT, static_cast<WPARAM>(wanted));
}

void NodeTree::SetSize(SIZE size) {
    SetWindowPos(handle_, nullptr, 0, 0, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace widgets
