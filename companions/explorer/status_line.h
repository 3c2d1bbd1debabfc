#pragma once

#include "explorer/look.h"
#include "hosting/host_window.h"

#include <string>

namespace explorer {

/// The line at the bottom of the main window: what is open, and how much is shown of it.
class StatusLine {
public:
    explicit StatusLine(HWND parent);

    /// Texts of the parts from left to right; the first takes the room that the others leave.
    struct Texts {
        std::wstring document;
        std::wstring metaNodes;
        std::wstring nodes;
        std::wstring links;
    };
    void Show(const Texts& texts);
    /// Shows what has just happened in the first part, until the next Show.
    void Say(const std::wstring& text);

    void SetLook(const Look& look);
    /// Goes to the bottom of the parent's client area. Returns the height in pixels.
    int Place();

private:
    hosting::OwnedWindow bar_;
    int partWidth_ = 0;
};

/// "1 node", "12 nodes"
[[nodiscard]] std::wstring CountText(long count, const std::wstring& noun);

}  // namespace explorer
