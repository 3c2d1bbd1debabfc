#include "explorer/error_box.h"

#include "explorer/errors.h"
#include "explorer/output.h"

namespace explorer {

void ErrorBox::Report(const std::wstring& action, const hosting::Error& error) {
    ++count_;
    const std::wstring text = ErrorText(error);
    log_.Add(L"Explorer", L"Error", action + L": " + text);
    if (unattended_) {
        PrintError(action + L": " + text + L"\n");
        return;
    }
    waiting_.push_back(action + L"\n\n" + text);
    PostMessageW(owner_, message, 0, 0);
}

void ErrorBox::ShowNext() {
    if (waiting_.empty()) return;
    const std::wstring text = waiting_.front();
    waiting_.pop_front();
    MessageBoxW(owner_, text.c_str(), L"Orvane Explorer", MB_OK | MB_ICONERROR);
}

}  // namespace explorer
