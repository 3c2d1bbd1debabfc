#pragma once

#include <windows.h>

#include <commctrl.h>

#include "widgets/image_list.h"

namespace widgets {

/// The state of a list's or a tree's item with a check box, or without one.
constexpr UINT CheckBoxState(bool shown, bool checked) {
    return INDEXTOSTATEIMAGEMASK(shown ? (checked ? 2u : 1u) : 0u);
}

/// The images of check boxes as a list of state images has them: none, empty, checked.
class CheckBoxImages {
public:
    /// Drawn when first asked for, for a window's resolution.
    HIMAGELIST Get(HWND window);

private:
    ImageList list_;
};

}  // namespace widgets
