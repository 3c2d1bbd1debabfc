#pragma once

#include <windows.h>

#include <commctrl.h>

namespace widgets {

/// The images of check boxes as a list of state images has them: none, empty, checked.
class CheckBoxImages {
public:
    static constexpr UINT unchecked = 1;
    static constexpr UINT checked = 2;

    CheckBoxImages() = default;
    ~CheckBoxImages();
    CheckBoxImages(const CheckBoxImages&) = delete;
    CheckBoxImages& operator=(const CheckBoxImages&) = delete;

    /// Drawn when first asked for, for a window's resolution.
    HIMAGELIST Get(HWND window);

private:
    HIMAGELIST list_ = nullptr;
};

}  // namespace widgets
