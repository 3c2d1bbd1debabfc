// What the main window does with its tree.
#include "explorer/automation.h"
#include "explorer/main_window.h"
#include "explorer/resources.h"

#include <optional>
#include <utility>

namespace explorer {

namespace {

using hosting::LateBound;

struct DestroysMenu {
    void operator()(HMENU menu) const noexcept { DestroyMenu(menu); }
};

/// Asks for one of several, where the pointer is.
std::optional<std::size_t> Choose(HWND owner, const std::vector<LinkCandidate>& candidates) {
    const std::unique_ptr<std::remove_pointer_t<HMENU>, DestroysMenu> menu(CreatePopupMenu());
    for (std::size_t i = 0; i < candidates.size(); ++i)
        AppendMenuW(menu.get(), MF_STRING, ID_LINK_FIRST + i, TextOf(candidates[i]).c_str());
    POINT pointer{};
    GetCursorPos(&pointer);
    const BOOL chosen = TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, pointer.x,
                                       pointer.y, 0, owner, nullptr);
    if (!chosen) return std::nullopt;
    return static_cast<std::size_t>(chosen - ID_LINK_FIRST);
}

}  // namespace

void MainWindow::ShowTree(TreeKind kind) {
    Try(Reporter(), L"Showing the tree",
        [&] { tree_->Show(kind, document_.Repository(), navigator_->MetaNode()); });
    ShowMenu();
}

/// A node is listed among the others of its meta node, a folder by what it holds.
void MainWindow::ChooseInTree(const TreeChoice& choice) {
    using Kind = TreeChoice::Kind;
    const auto list = [this](ListKind kind) {
        if (list_->Kind() != kind) list_->Show(kind, Source());
    };
    switch (choice.kind) {
        case Kind::metaNode:
            navigator_->MetaNodes().Select(choice.object);
            list(ListKind::nodes);
            break;
        case Kind::metaLink:
            if (choice.owner) navigator_->ChooseNode(choice.owner);
            navigator_->MetaLinks().Select(choice.object);
            list(ListKind::outgoingLinks);
            break;
        case Kind::node:
            navigator_->ChooseNode(choice.object);
            if (!NeedsOf(list_->Kind()).node) list(ListKind::nodes);
            if (list_->Kind() == ListKind::nodes)
                list_->Control().PutRef(L"selection", choice.object.Get());
            break;
    }
    ShowMenu();
}

void MainWindow::NodeWasRenamed() {
    navigator_->Refresh();
    list_->Show(list_->Kind(), Source());
}

void MainWindow::RemoveLinkOfTree() {
    const LateBound link = tree_->SelectedLink();
    if (!link) return status_->Say(L"The selected node was not reached by a link");
    const std::wstring text = CaptionOf(link.Object(L"source")) + L" " +
                              TextOf(link.Object(L"parent").Get(L"name")) + L" " +
                              CaptionOf(link.Object(L"Target"));
    document_.Repository().Call(L"RemoveClass", link.Get());
    tree_->RemoveLink(link);
    list_->Show(list_->Kind(), Source());
    ShowStatus();
    status_->Say(L"Removed: " + text);
}

/// The question comes when the drag is over.
void MainWindow::DropOnTree(const LateBound& target) {
    const LateBound dragged = tree_->Dragged() ? tree_->Dragged() : list_->Dragged();
    if (!dragged) return status_->Say(L"What was dropped is no object of the repository");
    candidates_ = LinkCandidates(target, dragged);
    if (candidates_.empty()) {
        return status_->Say(L"No meta link allows a link between " + CaptionOf(target) + L" and " +
                            CaptionOf(dragged));
    }
    PostMessageW(Handle(), askForLink, 0, 0);
}

void MainWindow::AskForLink() {
    const std::vector<LinkCandidate> candidates = std::exchange(candidates_, {});
    if (candidates.empty()) return;
    const std::optional<std::size_t> chosen =
        candidates.size() == 1 ? 0 : Choose(Handle(), candidates);
    if (chosen) Try(Reporter(), L"Making a link", [&] { MakeLinkOf(candidates[*chosen]); });
}

void MainWindow::MakeLinkOf(const LinkCandidate& candidate) {
    const LateBound link = MakeLink(document_.Repository(), candidate);
    log_.Add(L"Explorer", L"Link", TextOf(candidate));
    tree_->AddLink(link);
    if (ListsLinks(list_->Kind())) list_->Show(list_->Kind(), Source());
    ShowStatus();
    status_->Say(L"Made: " + TextOf(candidate));
}

}  // namespace explorer
