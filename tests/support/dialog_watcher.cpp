#include "support/dialog_watcher.h"

#include "support/text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <ostream>
#include <utility>

namespace support {

namespace {

DialogWatcher* active = nullptr;
constexpr UINT_PTR answerTimer = 0xD1A106;

std::string TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)), L'\0');
    const int size = GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1);
    text.resize(static_cast<std::size_t>(size));
    return Utf8(text);
}

std::string ClassOf(HWND window) {
    std::array<wchar_t, 64> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return Utf8(std::wstring_view(name.data()));
}

std::string IconName(HICON icon) {
    const std::array known = {
        std::pair{IDI_ERROR, "error"},
        std::pair{IDI_WARNING, "warning"},
        std::pair{IDI_QUESTION, "question"},
        std::pair{IDI_INFORMATION, "information"},
    };
    for (const auto& [id, name] : known)
        if (icon != nullptr && icon == LoadIconW(nullptr, id)) return name;
    return {};
}

std::string WithoutAccessKey(std::string caption) {
    std::erase(caption, '&');
    return caption;
}

SeenDialog Describe(HWND dialog) {
    SeenDialog seen;
    seen.caption = TextOf(dialog);
    for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        const std::string kind = ClassOf(child);
        const auto style = GetWindowLongW(child, GWL_STYLE);
        if (kind == "Button") {
            if ((style & WS_VISIBLE) != 0) seen.buttons.push_back(WithoutAccessKey(TextOf(child)));
        } else if (kind == "Static") {
            if ((style & SS_TYPEMASK) == SS_ICON)
                seen.icon =
                    IconName(reinterpret_cast<HICON>(SendMessageW(child, STM_GETICON, 0, 0)));
            else if (const std::string text = TextOf(child); !text.empty())
                seen.text += (seen.text.empty() ? "" : "\n") + text;
        }
    }
    return seen;
}

/// Ends a dialog that nobody expected by the mildest of its buttons.
void Dismiss(HWND dialog) {
    for (const int button : {IDCANCEL, IDNO, IDOK, IDABORT}) {
        if (GetDlgItem(dialog, button) == nullptr) continue;
        PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
        return;
    }
    PostMessageW(dialog, WM_CLOSE, 0, 0);
}

}  // namespace

DialogWatcher::DialogWatcher() {
    active = this;
    hook_ = SetWindowsHookExW(WH_CBT, Hook, nullptr, GetCurrentThreadId());
}

DialogWatcher::~DialogWatcher() {
    UnhookWindowsHookEx(hook_);
    active = nullptr;
    if (reportsFailures && !answers_.empty())
        ADD_FAILURE() << answers_.size() << " expected dialogs did not come";
}

void DialogWatcher::Expect(int button) {
    Expect([button](HWND dialog) {
        // The button has to be there; a message box takes any identifier for an answer.
        EXPECT_NE(GetDlgItem(dialog, button), nullptr) << "no button " << button;
        PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
    });
}

void DialogWatcher::Expect(std::function<void(HWND)> answer) {
    answers_.push_back(std::move(answer));
}

LRESULT CALLBACK DialogWatcher::Hook(int code, WPARAM wide, LPARAM large) {
    if (active != nullptr) {
        const auto window = reinterpret_cast<HWND>(wide);
        if (code == HCBT_ACTIVATE && ClassOf(window) == "#32770") active->Noticed(window);
        if (code == HCBT_DESTROYWND) std::erase(active->noticed_, window);
    }
    return CallNextHookEx(nullptr, code, wide, large);
}

void DialogWatcher::Noticed(HWND dialog) {
    if (std::find(noticed_.begin(), noticed_.end(), dialog) != noticed_.end()) return;
    noticed_.push_back(dialog);
    // Its own message loop answers, when it is up.
    SetTimer(dialog, answerTimer, 20, OnTimer);
}

void CALLBACK DialogWatcher::OnTimer(HWND window, UINT, UINT_PTR timer, DWORD) {
    KillTimer(window, timer);
    if (active != nullptr) active->AnswerNext(window);
}

void DialogWatcher::AnswerNext(HWND dialog) {
    seen_.push_back(Describe(dialog));
    if (answers_.empty()) {
        ++unexpected_;
        if (reportsFailures) ADD_FAILURE() << "a dialog that was not expected: " << seen_.back();
        Dismiss(dialog);
        return;
    }
    const auto answer = std::move(answers_.front());
    answers_.erase(answers_.begin());
    answer(dialog);
}

std::ostream& operator<<(std::ostream& out, const SeenDialog& dialog) {
    out << '[' << dialog.caption << "] " << dialog.text;
    for (const std::string& button : dialog.buttons) out << " <" << button << '>';
    if (!dialog.icon.empty()) out << " (" << dialog.icon << ')';
    return out;
}

}  // namespace support
