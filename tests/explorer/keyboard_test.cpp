// The window with the real keyboard.
#include "explorer/window_fixture.h"
#include "support/input.h"

#include <gmock/gmock.h>

#include <cwctype>

namespace explorer {
namespace {

class KeyboardTest : public WindowTest {
protected:
    KeyboardTest() {
        BrowseBooks();
        window->Show(SW_SHOW);
        support::Input::Activate(window->Handle());
    }

    void Play(support::Input& input) {
        ASSERT_TRUE(input.Play(20000, [this](MSG& message) { return window->Translate(message); }));
    }
    void Press(WORD key) {
        support::Input input;
        Play(input.Key(key));
    }
    void Chord(std::initializer_list<WORD> keys) {
        support::Input input;
        Play(input.Chord(keys));
    }

    /// The letter that a menu's title marks.
    static WORD LetterOf(HMENU bar, int index) {
        wchar_t title[64] = L"";
        GetMenuStringW(bar, static_cast<UINT>(index), title, 64, MF_BYPOSITION);
        const std::wstring text = title;
        const auto mark = text.find(L'&');
        if (mark == std::wstring::npos) return 0;
        return static_cast<WORD>(std::towupper(text[mark + 1]));
    }
    /// The menu that is open, or none.
    static HMENU OpenMenu() {
        const HWND shown = FindWindowW(L"#32768", nullptr);
        if (!shown || !IsWindowVisible(shown)) return nullptr;
        return reinterpret_cast<HMENU>(SendMessageW(shown, MN_GETHMENU, 0, 0));
    }
    /// The control with the focus.
    std::wstring Focused() const {
        const HWND focus = GetFocus();
        for (const ComboField* field : {&navigator->MetaNodes(), &navigator->Nodes(),
                                        &navigator->MetaLinks(), &navigator->Links()})
            if (IsChild(field->Window(), focus)) return field->Name();
        if (IsChild(window->Tree().ControlWindow(), focus)) return L"tree";
        if (IsChild(window->List().ControlWindow(), focus)) return L"list";
        return focus == window->LogList() ? L"log" : L"";
    }
};

TEST_F(KeyboardTest, TabGoesThroughTheFieldsAndTheLogAndAround) {
    Texts stops = {Focused()};
    for (int step = 0; step < 7; ++step) {
        Press(VK_TAB);
        stops.push_back(Focused());
    }
    EXPECT_EQ(stops, (Texts{L"MetaNodes", L"Nodes", L"MetaLinks", L"Links", L"tree", L"list",
                            L"log", L"MetaNodes"}));
}

TEST_F(KeyboardTest, ShiftTabGoesTheOtherWay) {
    Texts stops;
    for (int step = 0; step < 7; ++step) {
        Chord({VK_SHIFT, VK_TAB});
        stops.push_back(Focused());
    }
    EXPECT_EQ(stops,
              (Texts{L"log", L"list", L"tree", L"Links", L"MetaLinks", L"Nodes", L"MetaNodes"}));
}

TEST_F(KeyboardTest, TheLettersOfTheLabelsLeadToTheirFields) {
    const std::pair<WORD, const wchar_t*> letters[] = {
        {'N', L"Nodes"}, {'O', L"Links"},     {'I', L"list"},     {'R', L"tree"},
        {'E', L"log"},   {'L', L"MetaLinks"}, {'M', L"MetaNodes"}};
    for (const auto& [letter, name] : letters) {
        Chord({VK_MENU, letter});
        EXPECT_EQ(Focused(), name);
    }
}

TEST_F(KeyboardTest, TheLettersOfTheMenusOpenThem) {
    const HMENU bar = GetMenu(window->Handle());
    const int count = GetMenuItemCount(bar);
    EXPECT_EQ(count, 5);
    for (int index = 0; index < count; ++index) {
        HMENU open = nullptr;
        support::Input input;
        input.Chord({VK_MENU, LetterOf(bar, index)}).Wait(200).Do([&open] { open = OpenMenu(); });
        Play(input.Key(VK_ESCAPE).Wait(50).Key(VK_ESCAPE).Wait(50));
        EXPECT_EQ(open, GetSubMenu(bar, index)) << index;
    }
}

TEST_F(KeyboardTest, ArrowKeysInTheLogStayThere) {
    navigator->MetaNodes().Select(MetaNode(L"Book"));
    const std::wstring before = Shown(navigator->MetaNodes());
    Chord({VK_MENU, 'E'});
    Press(VK_UP);
    EXPECT_EQ(Focused(), L"log");
    EXPECT_EQ(Shown(navigator->MetaNodes()), before);
}

TEST_F(KeyboardTest, TypingTheNameOfANodeChoosesIt) {
    navigator->MetaNodes().Select(MetaNode(L"Book"));
    Chord({VK_MENU, 'N'});
    support::Input input;
    Play(input.Text("On Trees"));
    EXPECT_EQ(Rows(navigator->Links()), Texts{L"On Graphs"});
    EXPECT_THAT(TakeLog(), testing::Contains(L"Nodes Change On Trees"));
}

TEST_F(KeyboardTest, TheMenusKeysWorkWhereverTheFocusIs) {
    navigator->MetaNodes().Select(MetaNode(L"Book"));
    navigator->Nodes().Select(Object(L"b1"));
    navigator->Links().Select(Object(L"c1"));
    Chord({VK_MENU, 'O'});
    Chord({VK_CONTROL, 'L'});
    EXPECT_EQ(Shown(navigator->Nodes()), L"On Graphs");
    document.Repository().Call(L"MakeNode", L"b3", L"Book", L"On Numbers");
    Press(VK_F5);
    EXPECT_THAT(Rows(navigator->Nodes()), testing::Contains(L"On Numbers"));
    EXPECT_EQ(Shown(navigator->Nodes()), L"On Graphs");
}

TEST_F(KeyboardTest, TheFocusComesBackToWhereItWas) {
    for (const WORD letter : {'O', 'E'}) {
        Chord({VK_MENU, letter});
        const std::wstring before = Focused();
        SetFocus(nullptr);
        SetFocus(window->Handle());
        EXPECT_EQ(Focused(), before);
    }
}

}  // namespace
}  // namespace explorer
