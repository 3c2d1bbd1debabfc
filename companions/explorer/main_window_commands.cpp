// What the main window does with its document.
#include "explorer/automation.h"
#include "explorer/file_dialogs.h"
#include "explorer/file_kind.h"
#include "explorer/main_window.h"
#include "explorer/resources.h"

#include <algorithm>

namespace explorer {

namespace {

constexpr wchar_t title[] = L"Orvane Explorer";
/// The log's name for what no control but the program itself does.
constexpr wchar_t program[] = L"Explorer";

class WaitCursor {
public:
    WaitCursor() : before_(SetCursor(LoadCursorW(nullptr, IDC_WAIT))) {}
    ~WaitCursor() { SetCursor(before_); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

private:
    HCURSOR before_;
};

long MetaNodeCount(const hosting::LateBound& repository) {
    long count = 0;
    ForEach(repository.Object(L"MetaNodes"), [&count](const hosting::LateBound& metaNode) {
        if (!IsBuiltIn(metaNode)) ++count;
        return true;
    });
    return count;
}

long CountOf(const hosting::LateBound& collection) {
    return static_cast<long>(collection.Get(L"Count"));
}

}  // namespace

template <class Work>
bool MainWindow::Do(const std::wstring& action, Work&& work) {
    const WaitCursor wait;
    return Try(Reporter(), action, work);
}

void MainWindow::OnCommand(WORD command) {
    switch (command) {
        case ID_FILE_NEW:
            Do(L"Making a new repository", [this] { New(); });
            break;
        case ID_FILE_OPEN:
            if (const auto path = AskForRepository(Handle()))
                Do(L"Opening " + *path, [&] { Open(*path); });
            break;
        case ID_FILE_IMPORT:
            ImportAll(AskForImports(Handle()));
            break;
        case ID_FILE_SAVE_AS:
            if (const auto path = AskForNewRepository(Handle()))
                Do(L"Saving " + *path, [&] { SaveAs(*path); });
            break;
        case ID_FILE_EXIT:
            SendMessageW(Handle(), WM_CLOSE, 0, 0);
            break;
        case ID_VIEW_REFRESH:
            Do(L"Refreshing", [this] {
                navigator_->Refresh();
                tree_->Show(tree_->Kind(), document_.Repository(), navigator_->MetaNode());
                list_->Show(list_->Kind(), Source());
            });
            break;
        case ID_VIEW_FOLLOW_LINK:
            Do(L"Following a link", [this] { navigator_->FollowLink(); });
            break;
        case ID_VIEW_CHECK_BOXES:
            Do(L"Switching the check boxes", [this] {
                list_->SetCheckBoxes(!list_->HasCheckBoxes());
                ShowMenu();
            });
            break;
        case ID_VIEW_CLEAR_LOG:
            log_.Clear();
            break;
        case ID_HELP_ABOUT:
            ShowAbout();
            break;
        case ID_TREE_RENAME:
            tree_->BeginRename();
            break;
        case ID_TREE_REMOVE_LINK:
            Do(L"Removing a link", [this] { RemoveLinkOfTree(); });
            break;
        default:
            if (command >= ID_TREE_FIRST && command <= ID_TREE_LAST)
                ShowTree(static_cast<TreeKind>(command - ID_TREE_FIRST));
            if (command >= ID_LIST_FIRST && command <= ID_LIST_LAST)
                ShowList(static_cast<ListKind>(command - ID_LIST_FIRST));
            break;
    }
}

bool MainWindow::OpenFiles(const std::vector<std::wstring>& files) {
    if (files.size() == 1 && KindOf(files.front()) == FileKind::repository) {
        if (Do(L"Opening " + files.front(), [&] { Open(files.front()); })) return true;
        Do(L"Making a new repository", [this] { New(); });
        return false;
    }
    const bool isNew = Do(L"Making a new repository", [this] { New(); });
    return ImportAll(files) && isNew;
}

bool MainWindow::ImportAll(const std::vector<std::wstring>& files) {
    bool all = true;
    for (const auto& group : ImportGroups(files)) {
        const auto others = static_cast<long>(group.size()) - 1;
        const std::wstring rest = others ? L" and " + CountText(others, L"other file") : L"";
        all = Do(L"Importing " + group.front() + rest, [&] { Import(group); }) && all;
    }
    return all;
}

void MainWindow::New() {
    document_.New();
    log_.Add(program, L"New", L"");
    ShowDocument();
}

void MainWindow::Open(const std::wstring& path) {
    document_.Open(path);
    log_.Add(program, L"Open", path);
    ShowDocument();
}

void MainWindow::Import(const std::vector<std::wstring>& paths) {
    const auto messages = document_.Import(paths);
    for (const auto& path : paths) log_.Add(program, L"Import", path);
    for (const auto& message : messages) log_.Add(program, L"Message", message);
    ShowDocument();
}

void MainWindow::SaveAs(const std::wstring& path) {
    document_.SaveAs(path);
    log_.Add(program, L"Save", path);
    ShowDocument();
}

void MainWindow::ShowDocument() {
    SetWindowTextW(Handle(), (document_.Description() + L" - " + title).c_str());
    navigator_->Browse(document_.Repository());
    tree_->Show(tree_->Kind(), document_.Repository(), navigator_->MetaNode());
    list_->Show(list_->Kind(), Source());
    ShowMenu();
}

ListSource MainWindow::Source() const {
    return {document_.Repository(), navigator_->MetaNode(), navigator_->Node(),
            navigator_->MetaLink()};
}

void MainWindow::ShowChoice() {
    Try(Reporter(), L"Listing what belongs to the choice", [this] {
        tree_->Follow(navigator_->MetaNode());
        list_->Follow(Source());
    });
    ShowStatus();
}

void MainWindow::ShowList(ListKind kind) {
    Do(L"Listing", [&] { list_->Show(kind, Source()); });
    ShowMenu();
}

void MainWindow::ShowMenu() {
    const HMENU menu = GetMenu(Handle());
    CheckMenuRadioItem(menu, ID_LIST_FIRST, ID_LIST_LAST,
                       ID_LIST_FIRST + static_cast<UINT>(list_->Kind()), MF_BYCOMMAND);
    CheckMenuRadioItem(menu, ID_TREE_FIRST, ID_TREE_LAST,
                       ID_TREE_FIRST + static_cast<UINT>(tree_->Kind()), MF_BYCOMMAND);
    const UINT renames = tree_->Kind() == TreeKind::described ? MF_GRAYED : MF_ENABLED;
    EnableMenuItem(menu, ID_TREE_RENAME, MF_BYCOMMAND | renames);
    EnableMenuItem(menu, ID_TREE_REMOVE_LINK, MF_BYCOMMAND | renames);
    const UINT checked = list_->HasCheckBoxes() ? MF_CHECKED : MF_UNCHECKED;
    CheckMenuItem(menu, ID_VIEW_CHECK_BOXES, MF_BYCOMMAND | checked);
}

/// Goes where a row leads: into a type, to a node, along a link.
void MainWindow::OpenRow(ListKind kind, const hosting::LateBound& object) {
    if (kind == ListKind::metaNodes) {
        navigator_->MetaNodes().Select(object);
        ShowList(ListKind::nodes);
    } else if (kind == ListKind::nodes) {
        navigator_->ChooseNode(object);
    } else if (kind == ListKind::outgoingMetaLinks) {
        navigator_->MetaLinks().Select(object);
    } else if (ListsLinks(kind)) {
        navigator_->ChooseNode(
            object.Object(kind == ListKind::incomingLinks ? L"source" : L"Target"));
    }
}

void MainWindow::ShowStatus() {
    if (!status_) return;
    StatusLine::Texts texts;
    Try(Reporter(), L"Counting what is shown", [&] {
        texts.document = document_.Description();
        texts.metaNodes = CountText(MetaNodeCount(document_.Repository()), L"meta node");
        const hosting::LateBound metaNode = navigator_->MetaNode();
        if (metaNode) texts.nodes = CountText(CountOf(metaNode.Object(L"Extension")), L"node");
        const hosting::LateBound node = navigator_->Node();
        const hosting::LateBound metaLink = navigator_->MetaLink();
        if (node && metaLink)
            texts.links =
                CountText(CountOf(node.Object(L"Outgoing_", metaLink.Get(L"name"))), L"link");
    });
    status_->Show(texts);
    const UINT enabled = navigator_->Link() ? MF_ENABLED : MF_GRAYED;
    EnableMenuItem(GetMenu(Handle()), ID_VIEW_FOLLOW_LINK, MF_BYCOMMAND | enabled);
}

void MainWindow::ShowAbout() {
    MessageBoxW(Handle(),
                L"Orvane Explorer 1.0\n\nBrowses model repositories with the Orvane Controls.",
                title, MB_OK | MB_ICONINFORMATION);
}

}  // namespace explorer
