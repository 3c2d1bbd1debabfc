#include "support/dialog_watcher.h"

#include <gtest/gtest.h>

namespace support {
namespace {

TEST(DialogWatchers, RecordAndAnswerAMessageBox) {
    DialogWatcher dialogs;
    dialogs.Expect(IDYES);
    EXPECT_EQ(MessageBoxW(nullptr, L"Really?", L"Question", MB_YESNO | MB_ICONQUESTION), IDYES);
    const SeenDialog expected = {"Question", "Really?", {"Yes", "No"}, "question"};
    ASSERT_EQ(dialogs.Seen().size(), 1u);
    EXPECT_EQ(dialogs.Seen().front(), expected);
}

TEST(DialogWatchers, TellIconsApart) {
    DialogWatcher dialogs;
    for (const UINT icon : {MB_ICONERROR, MB_ICONWARNING, MB_ICONINFORMATION, 0L}) {
        dialogs.Expect();
        MessageBoxW(nullptr, L"Text", L"", MB_OK | icon);
    }
    std::vector<std::string> icons;
    for (const SeenDialog& seen : dialogs.Seen()) icons.push_back(seen.icon);
    EXPECT_EQ(icons, (std::vector<std::string>{"error", "warning", "information", ""}));
}

TEST(DialogWatchers, AnswerWithWhatTheTestDoes) {
    DialogWatcher dialogs;
    dialogs.Expect([](HWND dialog) { EndDialog(dialog, 77); });
    EXPECT_EQ(MessageBoxW(nullptr, L"Text", L"Caption", MB_OK), 77);
}

TEST(DialogWatchers, EndADialogThatWasNotExpected) {
    DialogWatcher dialogs;
    dialogs.reportsFailures = false;
    EXPECT_EQ(MessageBoxW(nullptr, L"Text", L"Caption", MB_OKCANCEL), IDCANCEL);
    EXPECT_EQ(dialogs.Unexpected(), 1u);
}

TEST(DialogWatchers, MissADialogThatDoesNotCome) {
    DialogWatcher dialogs;
    dialogs.reportsFailures = false;
    dialogs.Expect();
    EXPECT_EQ(dialogs.Missing(), 1u);
}

}  // namespace
}  // namespace support
