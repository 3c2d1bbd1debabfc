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

bool IsBuiltIn(const std::wstring& metaNode) {
    return metaNode == L"MetaNode" || metaNode == L"MetaLink" || metaNode == L"MetaProperty";
}

long MetaNodeCount(const hosting::LateBound& repository) {
    long count = 0;
    ForEach(repository.Object(L"MetaNodes"), [&count](const hosting::LateBound& metaNode) {
        if (!IsBuiltIn(TextOf(metaNode.Get(L"name")))) ++count;
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
            for (const auto& path : AskForImports(Handle()))
                Do(L"Importing " + path, [&] { Import(path); });
            break;
        case ID_FILE_SAVE_AS:
            if (const auto path = AskForNewRepository(Handle()))
                Do(L"Saving " + *path, [&] { SaveAs(*path); });
            break;
        case ID_FILE_EXIT:
            SendMessageW(Handle(), WM_CLOSE, 0, 0);
            break;
        case ID_VIEW_REFRESH:
            Do(L"Refreshing", [this] { navigator_->Refresh(); });
            break;
        case ID_VIEW_FOLLOW_LINK:
            Do(L"Following a link", [this] { navigator_->FollowLink(); });
            break;
        case ID_VIEW_CLEAR_LOG:
            log_.Clear();
            break;
        case ID_HELP_ABOUT:
            ShowAbout();
            break;
        default:
            break;
    }
}

bool MainWindow::OpenFiles(const std::vector<std::wstring>& files) {
    if (files.size() == 1 && !IsImported(files.front())) {
        if (Do(L"Opening " + files.front(), [&] { Open(files.front()); })) return true;
        Do(L"Making a new repository", [this] { New(); });
        return false;
    }
    bool all = Do(L"Making a new repository", [this] { New(); });
    for (const auto& file : files) all = Do(L"Importing " + file, [&] { Import(file); }) && all;
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

void MainWindow::Import(const std::wstring& path) {
    const auto messages = document_.Import(path);
    log_.Add(program, L"Import", path);
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
