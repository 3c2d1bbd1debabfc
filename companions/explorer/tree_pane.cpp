#include "explorer/tree_pane.h"

#include "explorer/automation.h"
#include "explorer/described_tree.h"
#include "explorer/hosted.h"
#include "explorer/linked_tree.h"

#include <commctrl.h>

#include <utility>

namespace explorer {

namespace {

using hosting::LateBound;

constexpr int smallIcon = 16;
constexpr SIZE minimumSize{160, 110};

/// What a tree shows, for people.
std::wstring TitleOf(TreeKind kind, const LateBound& metaNode) {
    if (kind == TreeKind::described) return L"The repository";
    if (!metaNode) return L"Choose a meta node";
    return L"From " + TextOf(metaNode.Get(L"name"));
}

/// While the tree is in one of its own events.
class Telling {
public:
    explicit Telling(bool& tells) : tells_(tells), before_(std::exchange(tells, true)) {}
    ~Telling() { tells_ = before_; }
    Telling(const Telling&) = delete;
    Telling& operator=(const Telling&) = delete;

private:
    bool& tells_;
    bool before_;
};

}  // namespace

TreePane::TreePane(hosting::Form& form, EventLog& log, ErrorHandler onError)
    : log_(log),
      label_(form.Window(), L"T&ree", PaneLabel::Margins::left),
      place_(form.Add(L"Tree")),
      icons_(std::make_unique<IconFiles>(iconSize_)) {
    calls_.onChoice = [this](const TreeChoice& choice) {
        const Telling telling(tells_);
        if (onChoice) onChoice(choice);
    };
    calls_.onRename = [this](const LateBound& node) {
        const Telling telling(tells_);
        if (onRename) onRename(node);
    };
    calls_.onDrag = [this](const LateBound& node) { dragged_ = node; };
    calls_.onDrop = [this](const LateBound& target) {
        if (onDrop) onDrop(target);
    };
    calls_.onError = std::move(onError);
    label_.SetText(TitleOf(kind_, {}));
    tree_ = MakeTree(kind_);
}

TreePane::~TreePane() {
    tree_.reset();
    place_.GetForm().Remove(place_);
}

std::unique_ptr<HostedTree> TreePane::MakeTree(TreeKind kind) {
    if (kind == TreeKind::described)
        return std::make_unique<DescribedTree>(place_, log_, *icons_, calls_);
    return std::make_unique<LinkedTree>(place_, log_, *icons_, calls_,
                                        kind == TreeKind::hierarchyWithFolders);
}

void TreePane::Show(TreeKind kind, const LateBound& repository, const LateBound& metaNode) {
    tree_.reset();
    kind_ = kind;
    repository_ = repository;
    metaNode_ = metaNode;
    label_.SetText(TitleOf(kind, metaNode));
    tree_ = MakeTree(kind);
    if (!repository || (NeedsMetaNode(kind) && !metaNode)) return;
    tree_->Show(repository, metaNode);
}

void TreePane::Follow(const LateBound& metaNode) {
    if (tells_ || !NeedsMetaNode(kind_) || IsSame(metaNode, metaNode_)) return;
    Show(kind_, repository_, metaNode);
}

LateBound TreePane::SelectedLink() const {
    return tree_ ? tree_->SelectedLink() : LateBound();
}

void TreePane::AddLink(const LateBound& link) {
    if (tree_) tree_->AddLink(link);
}

void TreePane::RemoveLink(const LateBound& link) {
    if (tree_) tree_->RemoveLink(link);
}

void TreePane::BeginRename() {
    Focus();
    if (const HWND tree = TreeWindow()) SendMessageW(tree, WM_KEYDOWN, VK_F2, 0);
}

HWND TreePane::TreeWindow() const {
    const HWND control = ControlWindow();
    return control ? FindWindowExW(control, nullptr, WC_TREEVIEWW, nullptr) : nullptr;
}

void TreePane::SetLook(const Look& look) {
    label_.SetLook(look);
    SetFont(place_, look);
    minimum_ = look.Scale(minimumSize);
    if (look.Scale(smallIcon) == iconSize_) return;
    Try(calls_.onError, L"Showing the tree with icons of another size",
        [&] { SetIconSize(look.Scale(smallIcon)); });
}

void TreePane::SetIconSize(int size) {
    auto icons = std::make_unique<IconFiles>(size);
    tree_.reset();
    icons_ = std::move(icons);
    iconSize_ = size;
    Show(kind_, repository_, metaNode_);
}

void TreePane::Place(const RECT& bounds) {
    place_.Move(label_.Place(bounds));
}

bool TreePane::FocusMnemonic(wchar_t letter) {
    if (letter != label_.Mnemonic()) return false;
    Focus();
    return true;
}

SIZE TreePane::MinimumSize() const {
    return minimum_;
}

}  // namespace explorer
