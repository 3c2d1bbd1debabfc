#include "explorer/window_fixture.h"

#include "explorer/automation.h"
#include "support/inner_window.h"

#include <commctrl.h>

namespace explorer {

WindowTest::WindowTest() {
    const INITCOMMONCONTROLSEX wanted{sizeof wanted, ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES};
    InitCommonControlsEx(&wanted);
    window = std::make_unique<MainWindow>(document, log, errors);
    navigator = &window->Navigator();
    document.New();
}

WindowTest::~WindowTest() = default;

void WindowTest::BrowseBooks() {
    const hosting::LateBound& repository = document.Repository();
    repository.Call(L"MakeMetaNode", L"Author");
    repository.Call(L"MakeMetaNode", L"Book");
    repository.Call(L"MakeMetaLink", L"wrote", L"Author", L"Book");
    repository.Call(L"MakeMetaLink", L"knows", L"Author", L"Author");
    repository.Call(L"MakeMetaLink", L"cites", L"Book", L"Book");
    repository.Call(L"MakeNode", L"a1", L"Author", L"Ada");
    repository.Call(L"MakeNode", L"a2", L"Author", L"Ben");
    repository.Call(L"MakeNode", L"b1", L"Book", L"On Trees");
    repository.Call(L"MakeNode", L"b2", L"Book", L"On Graphs");
    const auto link = [&](const wchar_t* metaLink, const wchar_t* source, const wchar_t* target,
                          const wchar_t* identifier) {
        repository.Call(L"MakeLink", metaLink, Object(source).Get(), Object(target).Get(),
                        identifier, L"");
    };
    link(L"wrote", L"a1", L"b1", L"w1");
    link(L"wrote", L"a1", L"b2", L"w2");
    link(L"knows", L"a1", L"a2", L"k1");
    link(L"cites", L"b1", L"b2", L"c1");
    navigator->Browse(repository);
}

hosting::LateBound WindowTest::Object(const wchar_t* identifier) const {
    return document.Repository().Object(L"Objects", identifier);
}

hosting::LateBound WindowTest::MetaNode(const wchar_t* name) const {
    return document.Repository().Object(L"MetaNodes", name);
}

hosting::LateBound WindowTest::MetaLink(const wchar_t* name) const {
    return document.Repository().Object(L"MetaLinks", name);
}

void WindowTest::Command(UINT command) const {
    SendMessageW(window->Handle(), WM_COMMAND, command, 0);
}

Texts WindowTest::ListedNames() const {
    Texts names;
    ForEach(window->List().Control().Object(L"GetItems"), [&](const hosting::LateBound& row) {
        names.push_back(CaptionOf(row));
        return true;
    });
    return names;
}

HWND WindowTest::Box(const ComboField& field) {
    return support::InnerWindow(field.Window(), WC_COMBOBOXW);
}

Texts WindowTest::Rows(const ComboField& field) {
    Texts rows;
    const HWND box = Box(field);
    const auto count = SendMessageW(box, CB_GETCOUNT, 0, 0);
    for (LRESULT row = 0; row < count; ++row) {
        const auto index = static_cast<WPARAM>(row);
        std::wstring text(static_cast<std::size_t>(SendMessageW(box, CB_GETLBTEXTLEN, index, 0)),
                          L'\0');
        SendMessageW(box, CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(text.data()));
        rows.push_back(text);
    }
    return rows;
}

std::wstring WindowTest::Shown(const ComboField& field) {
    wchar_t text[256] = L"";
    GetWindowTextW(Box(field), text, 256);
    return text;
}

Texts WindowTest::TakeLog() {
    Texts texts;
    for (; logTaken_ < log.Entries().size(); ++logTaken_) {
        const LogEntry& entry = log.Entries()[logTaken_];
        texts.push_back(entry.control + L" " + entry.event + L" " + entry.key);
    }
    return texts;
}

Texts WindowTest::Status() const {
    const HWND bar = support::InnerWindow(window->Handle(), STATUSCLASSNAMEW);
    Texts texts;
    const auto parts = SendMessageW(bar, SB_GETPARTS, 0, 0);
    for (LRESULT part = 0; part < parts; ++part) {
        wchar_t text[256] = L"";
        SendMessageW(bar, SB_GETTEXTW, static_cast<WPARAM>(part), reinterpret_cast<LPARAM>(text));
        texts.emplace_back(text);
    }
    return texts;
}

}  // namespace explorer
