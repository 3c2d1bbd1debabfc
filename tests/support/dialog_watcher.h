#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace support {

/// A message box or dialog that came up.
struct SeenDialog {
    std::string caption;
    std::string text;                  ///< what its labels say
    std::vector<std::string> buttons;  ///< without the mark of the access key
    std::string icon;                  ///< "error", "warning", "question", "information" or ""

    friend bool operator==(const SeenDialog&, const SeenDialog&) = default;
};

/// Sees every dialog that the thread brings up while it lives, notes what it says and answers it,
/// so that no test waits for a hand. A dialog that was not expected, and an expected one that did
/// not come, fail the test.
class DialogWatcher {
public:
    DialogWatcher();
    ~DialogWatcher();
    DialogWatcher(const DialogWatcher&) = delete;
    DialogWatcher& operator=(const DialogWatcher&) = delete;

    /// The next dialog not yet spoken for will come, and is answered with this button.
    void Expect(int button = IDOK);
    /// The same, answered by `answer`, which runs in the dialog's own message loop and gets its
    /// window. It has to see to it that the dialog ends.
    void Expect(std::function<void(HWND dialog)> answer);

    [[nodiscard]] const std::vector<SeenDialog>& Seen() const { return seen_; }

    /// For the watcher's own test: dialogs that were not expected, instead of a failed test.
    bool reportsFailures = true;
    [[nodiscard]] std::size_t Unexpected() const { return unexpected_; }
    [[nodiscard]] std::size_t Missing() const { return answers_.size(); }

private:
    static LRESULT CALLBACK Hook(int code, WPARAM wide, LPARAM large);
    static void CALLBACK OnTimer(HWND window, UINT message, UINT_PTR timer, DWORD time);
    void Noticed(HWND dialog);
    void AnswerNext(HWND dialog);

    HHOOK hook_ = nullptr;
    std::vector<SeenDialog> seen_;
    std::vector<std::function<void(HWND)>> answers_;
    std::vector<HWND> noticed_;
    std::size_t unexpected_ = 0;
};

std::ostream& operator<<(std::ostream& out, const SeenDialog& dialog);

}  // namespace support
