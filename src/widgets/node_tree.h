#pragma once

#include <windows.h>

#include <commctrl.h>

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ole/ref.h"
#include "widgets/check_box_images.h"
#include "widgets/image_lists.h"
#include "widgets/node_store.h"

namespace widgets {

/// The system's tree view over nodes that are kept here. The window gets the nodes of a level in
/// one go, and not before somebody needs them: when their parent opens, or when a program reads the
/// window.
///
/// What the user does is reported after the system's own handling has returned, or without it, so
/// that whoever is told may remove nodes, change the tree or let go of it.
class NodeTree {
public:
    /// Keeps whoever owns the tree alive while the tree handles a message.
    std::function<ole::Ref<IUnknown>()> holdOwner;
    /// Whether a node's children have to be made before it opens, and who makes them.
    std::function<bool(const TreeNode&)> isUnfilled;
    std::function<void(const NodePtr&)> onFill;

    std::function<void(const NodePtr&)> onClosed;
    std::function<void(const NodePtr&)> onClick;
    /// The system does not see the press: whoever is told may show a menu until it is over.
    std::function<void(const NodePtr&)> onRightDown;
    std::function<void(const NodePtr&)> onChecked;
    std::function<void()> onDoubleClick;
    /// The node that is dragged is selected.
    std::function<void()> onBeginDrag;
    /// The selected node's text is about to be edited: false prevents it.
    std::function<bool()> onBeginEdit;
    /// It was edited: false keeps the text that it had; the new one may be changed.
    std::function<bool(const NodePtr&, std::wstring&)> onEndEdit;
    std::function<void(bool focused)> onFocus;

    /// `linesAtRoot`: with lines and buttons at the nodes at the top, too.
    explicit NodeTree(bool linesAtRoot) : linesAtRoot_(linesAtRoot) {}
    ~NodeTree();
    NodeTree(const NodeTree&) = delete;
    NodeTree& operator=(const NodeTree&) = delete;

    /// Makes the window, or makes it again where it went with its parent.
    void Create(HWND parent);
    HWND Handle() const { return handle_; }

    // Nodes. The window learns of added nodes with `Sync`.

    const NodeStore& Nodes() const { return nodes_; }
    /// As `NodeStore::Add`; null for `parent` adds at the top.
    NodePtr Add(std::int32_t number, TreeNode* parent);
    void Remove(TreeNode& node);
    void Clear();
    void Sync();
    /// A node's text or image is another one.
    void ShowAgain(TreeNode& node);

    void Check(TreeNode& node, bool checked);
    void CheckAll(bool checked);

    NodePtr Selected() const;
    /// Selects a node and opens those above it; fills those that are unfilled. Errors of the
    /// filling reach the caller.
    void Select(const NodePtr& node);
    /// Opens a node that has children; fills it first where it is unfilled. Errors of the filling
    /// reach the caller.
    void Open(const NodePtr& node);
    /// The node whose icon or text is at a point of the screen, or null.
    NodePtr HitTest(POINT screen);
    /// Asks, and begins to edit the selected node's text; does nothing where that is switched off.
    void Edit();

    // Looks and manners.

    bool HasCheckBoxes() const { return checkBoxes_; }
    void SetCheckBoxes(bool shown);
    bool EditsLabels() const { return editsLabels_; }
    void SetEditsLabels(bool edits);
    void SetDrags(bool drags);
    void Enable(bool enabled);
    /// In pixels.
    void SetIndent(int indent);
    void SetImages(const ImageLists* images);
    void SetColors(COLORREF text, COLORREF background);
    void SetFont(HFONT font);
    void SetSize(SIZE size);

    std::optional<LRESULT> OnParentMessage(UINT message, WPARAM wide, LPARAM large);
    bool UsesKey(const MSG& message) const;
    /// Draws the tree as it looks without a window.
    void Draw(HDC context, const RECT& bounds);

    /// While it lives, removed nodes stay in the window.
    class Removing {
    public:
        explicit Removing(NodeTree& tree) : tree_(tree) { ++tree_.removing_; }
        ~Removing() {
            --tree_.removing_;
            tree_.RemoveDoomed();
        }
        Removing(const Removing&) = delete;
        Removing& operator=(const Removing&) = delete;

    private:
        NodeTree& tree_;
    };

private:
    /// An item of the window whose node is gone. It cannot go while the window handles a message.
    struct Doomed {
        HTREEITEM item;
        HTREEITEM parent;
    };

    class Still;

    LRESULT Send(UINT message, WPARAM wide = 0, LPARAM large = 0) const;
    void SetStyle(DWORD style, bool on) const;
    COLORREF ShownTextColor() const;
    /// Makes the rows as high as font and icons need.
    void FitRows();

    // Window items.
    static HTREEITEM ItemOf(const TreeNode& node) { return static_cast<HTREEITEM>(node.item); }
    HTREEITEM ItemOrRoot(const TreeNode& node) const;
    NodePtr NodeOf(HTREEITEM item) const;
    static TVITEMW LookOf(TreeNode& node);
    HTREEITEM Insert(TreeNode& node, HTREEITEM parent, HTREEITEM after) const;
    bool IsOpenInWindow(const TreeNode& node) const;
    /// The children of a node that wait get their items.
    void InsertLevel(TreeNode& parent);
    /// The node gets its item, where it does not have one.
    void Show(TreeNode& node);
    /// Gives a node's item its check box, or takes that away.
    void ShowBox(const TreeNode& node, bool shown) const;
    void SelectItem(TreeNode& node);
    /// Fills a node that is unfilled.
    void Fill(const NodePtr& node);
    /// Gives up an edit that is under way: the system forgets which node it is of.
    void EndEditing();
    void Doom(TreeNode& node);
    void RemoveDoomed();
    void ForgetItems();

    /// Posted to the window when an edit has ended.
    static constexpr UINT endOfEdit = WM_APP + 1;

    // Messages to the window.
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wide, LPARAM large);
    LRESULT OnMessage(UINT message, WPARAM wide, LPARAM large);
    /// Before the system sees it; an answer where it shall not.
    std::optional<LRESULT> OnBefore(UINT message, WPARAM wide, LPARAM large);
    /// Somebody reads or opens an item. False where it went meanwhile.
    bool OnRead(UINT message, WPARAM wide, HTREEITEM item);
    std::optional<LRESULT> OnKeyDown(WPARAM key);
    bool OnRightDown(POINT client);
    /// After the outermost message: what was put off.
    void Settle();
    void Later(std::function<void()> work);

    // Notifications of the window.
    std::optional<LRESULT> OnNotify(NMHDR& header);
    bool OnExpanding(const NMTREEVIEWW& notice);
    void OnExpanded(const NMTREEVIEWW& notice);
    /// What the mouse button went down on.
    TVHITTESTINFO Pressed() const;
    bool IsPressedOnBox() const;
    bool OnPressed(bool isDouble);
    void Toggle(const NodePtr& node);
    void OpenBranch(TreeNode& root);
    void EndEdit(const NodePtr& node, std::wstring text);

    HWND handle_ = nullptr;
    WNDPROC system_ = nullptr;
    NodeStore nodes_;
    /// The numbers of nodes in the window with children that wait.
    std::vector<std::int32_t> waiting_;
    std::vector<Doomed> doomed_;
    std::deque<std::function<void()>> later_;
    /// Edits that have ended, until the system has let go of their box.
    std::deque<std::function<void()>> edits_;
    /// How many messages the system is handling, one inside the other.
    mutable int depth_ = 0;
    int removing_ = 0;
    /// Where the mouse button went down.
    POINT pressed_ = {};
    /// The letter of a key that was used up, until it comes.
    wchar_t usedUp_ = 0;
    bool mayEdit_ = false;
    /// The system shows a box with a text that is edited.
    bool editing_ = false;
    /// The number of the node that was selected when the window went.
    std::optional<std::int32_t> selectedBefore_;
    /// A node opens that has been filled.
    bool opening_ = false;

    bool linesAtRoot_;
    bool checkBoxes_ = false;
    bool editsLabels_ = false;
    bool drags_ = false;
    bool enabled_ = true;
    int indent_ = 0;
    CheckBoxImages checkBoxImages_;
    const ImageLists* images_ = nullptr;
    HFONT font_ = nullptr;
    COLORREF textColor_ = 0;
    COLORREF background_ = 0xFFFFFF;
};

}  // namespace widgets
