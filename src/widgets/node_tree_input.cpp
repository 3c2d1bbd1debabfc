#include <utility>

#include "ole/error.h"
#include "widgets/keys.h"
#include "widgets/node_tree.h"
#include "widgets/raised.h"

namespace widgets {

LRESULT CALLBACK NodeTree::Procedure(HWND window, UINT message, WPARAM wide, LPARAM large) {
    auto* const tree = reinterpret_cast<NodeTree*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (tree == nullptr) return DefWindowProcW(window, message, wide, large);
    if (message == WM_NCDESTROY) {
        // Somebody else destroyed it, as a parent does with its children.
        const WNDPROC system = tree->system_;
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        tree->handle_ = nullptr;
        tree->later_.clear();
        tree->edits_.clear();
        tree->ForgetItems();
        return CallWindowProcW(system, window, message, wide, large);
    }
    const ole::Ref<IUnknown> owner = tree->holdOwner();
    try {
        return tree->OnMessage(message, wide, large);
    } catch (...) {
        ole::NoteErrorWithoutCaller();
        return 0;
    }
}

LRESULT NodeTree::OnMessage(UINT message, WPARAM wide, LPARAM large) {
    const HWND window = handle_;
    if (message == WM_DESTROY) {
        if (const NodePtr selected = Selected()) selectedBefore_ = selected->Number();
    }
    if (message == endOfEdit) {
        // It may come while the system handles another message, as dragging a scroll bar is.
        if (!edits_.empty()) {
            Later(std::move(edits_.front()));
            edits_.pop_front();
        }
        Settle();
        return 0;
    }
    if (depth_ == 0) {
        if (const std::optional<LRESULT> answer = OnBefore(message, wide, large)) return *answer;
        if (handle_ != window) return 0;
    }
    LRESULT answer = 0;
    if (message == TVM_EXPAND) {
        const Raised opening(opening_);
        answer = Send(message, wide, large);
        if (const NodePtr node = NodeOf(reinterpret_cast<HTREEITEM>(large))) {
            node->expanded = IsOpenInWindow(*node);
        }
    } else {
        answer = Send(message, wide, large);
    }
    Settle();
    return answer;
}

void NodeTree::Settle() {
    if (depth_ != 0) return;
    RemoveDoomed();
    while (depth_ == 0 && !later_.empty()) {
        const auto work = std::move(later_.front());
        later_.pop_front();
        try {
            work();
        } catch (...) {
            ole::NoteErrorWithoutCaller();
        }
    }
}

void NodeTree::Later(std::function<void()> work) {
    later_.push_back(std::move(work));
}

std::optional<LRESULT> NodeTree::OnBefore(UINT message, WPARAM wide, LPARAM large) {
    switch (message) {
        case TVM_GETCOUNT:
            return static_cast<LRESULT>(nodes_.Size());
        case TVM_GETNEXTITEM:
        case TVM_EXPAND:
            if (!OnRead(message, wide, reinterpret_cast<HTREEITEM>(large))) return 0;
            return std::nullopt;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            pressed_ = {static_cast<short>(LOWORD(large)), static_cast<short>(HIWORD(large))};
            // Not every system tells of one beside the nodes.
            if (message == WM_LBUTTONDBLCLK) {
                Later([this] {
                    if (onDoubleClick) onDoubleClick();
                });
            }
            return std::nullopt;
        case WM_RBUTTONDOWN:
        case WM_RBUTTONDBLCLK:
            if (!OnRightDown(
                    {static_cast<short>(LOWORD(large)), static_cast<short>(HIWORD(large))}))
                return std::nullopt;
            return 0;
        case WM_KEYDOWN:
            usedUp_ = 0;
            return OnKeyDown(wide);
        case WM_CHAR:
            if (usedUp_ == 0 || wide != std::exchange(usedUp_, L'\0')) return std::nullopt;
            return 0;
        default:
            return std::nullopt;
    }
}

bool NodeTree::OnRead(UINT message, WPARAM wide, HTREEITEM item) {
    const NodePtr node = NodeOf(item);
    if (!node) return true;
    if (message == TVM_EXPAND) {
        if ((wide & TVE_EXPAND) == 0) return true;
        Fill(node);
        if (!nodes_.Holds(*node)) return false;
        InsertLevel(*node);
    } else if (wide == TVGN_CHILD) {
        InsertLevel(*node);
    } else if (wide == TVGN_NEXT && node->Next() != nullptr && node->Next()->item == nullptr) {
        InsertLevel(nodes_.PlaceOf(*node));
    }
    return true;
}

bool NodeTree::OnRightDown(POINT client) {
    POINT screen = client;
    ClientToScreen(handle_, &screen);
    const NodePtr node = HitTest(screen);
    if (!node) return false;
    SetFocus(handle_);
    if (onRightDown && nodes_.Holds(*node)) onRightDown(node);
    return true;
}

std::optional<LRESULT> NodeTree::OnKeyDown(WPARAM key) {
    const NodePtr node = Selected();
    if (!node) return std::nullopt;
    switch (key) {
        case VK_F2:
            Edit();
            return 0;
        case VK_MULTIPLY:
            usedUp_ = L'*';
            OpenBranch(*node);
            return 0;
        case VK_SPACE:
            if (!checkBoxes_ || GetKeyState(VK_CONTROL) < 0) return std::nullopt;
            usedUp_ = L' ';
            Toggle(node);
            return 0;
        default:
            return std::nullopt;
    }
}

void NodeTree::OpenBranch(TreeNode& root) {
    // Links may lead in circles: what is made here stays closed.
    for (const NodePtr& node : nodes_.BranchOf(root)) {
        if (!nodes_.Holds(*node) || node->FirstChild() == nullptr) continue;
        try {
            Open(node);
        } catch (...) {
            // The others may open all the same.
            ole::NoteErrorWithoutCaller();
        }
    }
}

std::optional<LRESULT> NodeTree::OnParentMessage(UINT message, WPARAM, LPARAM large) {
    if (message != WM_NOTIFY) return std::nullopt;
    auto& header = *reinterpret_cast<NMHDR*>(large);
    if (handle_ == nullptr || header.hwndFrom != handle_) return std::nullopt;
    return OnNotify(header);
}

std::optional<LRESULT> NodeTree::OnNotify(NMHDR& header) {
    switch (header.code) {
        case TVN_ITEMEXPANDINGW:
            return OnExpanding(reinterpret_cast<const NMTREEVIEWW&>(header)) ? FALSE : TRUE;
        case TVN_ITEMEXPANDEDW:
            OnExpanded(reinterpret_cast<const NMTREEVIEWW&>(header));
            return 0;
        case TVN_BEGINDRAGW:
            if (const NodePtr node =
                    NodeOf(reinterpret_cast<const NMTREEVIEWW&>(header).itemNew.hItem)) {
                Later([this, node] {
                    if (!nodes_.Holds(*node)) return;
                    Select(node);
                    if (onBeginDrag) onBeginDrag();
                });
            }
            return 0;
        case TVN_BEGINLABELEDITW:
            if (mayEdit_) {
                editing_ = true;
                return FALSE;
            }
            Later([this] { Edit(); });
            return TRUE;
        case TVN_ENDLABELEDITW: {
            // Not every system tells of it once: the box that is taken away loses the focus, too.
            if (!std::exchange(editing_, false)) return FALSE;
            const TVITEMW& item = reinterpret_cast<const NMTVDISPINFOW&>(header).item;
            const NodePtr node = NodeOf(item.hItem);
            if (node && item.pszText != nullptr) {
                edits_.push_back(
                    [this, node, text = std::wstring(item.pszText)] { EndEdit(node, text); });
                PostMessageW(handle_, endOfEdit, 0, 0);
            }
            return FALSE;
        }
        case NM_CLICK:
        case NM_DBLCLK:
            return OnPressed(header.code == NM_DBLCLK) ? TRUE : FALSE;
        case NM_SETFOCUS:
        case NM_KILLFOCUS:
            if (onFocus && !IsChild(handle_, GetFocus())) onFocus(header.code == NM_SETFOCUS);
            return 0;
        default:
            return std::nullopt;
    }
}

bool NodeTree::OnExpanding(const NMTREEVIEWW& notice) {
    if (opening_ || (notice.action & TVE_EXPAND) == 0) return true;
    const NodePtr node = NodeOf(notice.itemNew.hItem);
    if (!node) return false;
    if (!isUnfilled(*node) && !node->childrenWait) return true;
    Later([this, node] {
        if (nodes_.Holds(*node)) Open(node);
    });
    return false;
}

void NodeTree::OnExpanded(const NMTREEVIEWW& notice) {
    const NodePtr node = NodeOf(notice.itemNew.hItem);
    if (!node) return;
    node->expanded = (notice.action & TVE_EXPAND) != 0;
    if (node->expanded) return;
    Later([this, node] {
        if (onClosed) onClosed(node);
    });
}

TVHITTESTINFO NodeTree::Pressed() const {
    TVHITTESTINFO hit = {};
    hit.pt = pressed_;
    Send(TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    return hit;
}

bool NodeTree::IsPressedOnBox() const {
    return checkBoxes_ && (Pressed().flags & TVHT_ONITEMSTATEICON) != 0;
}

bool NodeTree::OnPressed(bool isDouble) {
    const TVHITTESTINFO hit = Pressed();
    const NodePtr node = NodeOf(hit.hItem);
    if (!node) return false;
    if (IsPressedOnBox()) {
        Later([this, node] { Toggle(node); });
        return true;
    }
    if (!isDouble && (hit.flags & TVHT_ONITEM) != 0) {
        Later([this, node] {
            if (onClick) onClick(node);
        });
    }
    return false;
}

void NodeTree::Toggle(const NodePtr& node) {
    if (!nodes_.Holds(*node)) return;
    Check(*node, !node->checked);
    if (onChecked) onChecked(node);
}

void NodeTree::Edit() {
    const NodePtr node = Selected();
    if (!editsLabels_ || !node) return;
    if (onBeginEdit && !onBeginEdit()) return;
    if (!nodes_.Holds(*node) || handle_ == nullptr) return;
    SetFocus(handle_);
    const Raised allowed(mayEdit_);
    Send(TVM_EDITLABELW, 0, reinterpret_cast<LPARAM>(ItemOf(*node)));
}

void NodeTree::EndEdit(const NodePtr& node, std::wstring text) {
    if (onEndEdit && !onEndEdit(node, text)) return;
    if (!nodes_.Holds(*node)) return;
    node->text = std::move(text);
    ShowAgain(*node);
}

bool NodeTree::UsesKey(const MSG& message) const {
    if (message.message != WM_KEYDOWN && message.message != WM_CHAR) return false;
    // A text that is edited takes all keys but the one that leaves the control.
    if (handle_ != nullptr && IsChild(handle_, message.hwnd)) return message.wParam != VK_TAB;
    if (message.message == WM_CHAR) return false;
    if (IsNavigationKey(message.wParam)) return true;
    switch (message.wParam) {
        case VK_ADD:
        case VK_SUBTRACT:
        case VK_MULTIPLY:
            return true;
        case VK_F2:
            return editsLabels_;
        default:
            return false;
    }
}

}  // namespace widgets
