#pragma once

#include <windows.h>

namespace widgets {

/// Whether a key moves through rows or letters: an arrow, Home, End, Page Up or Page Down.
constexpr bool IsNavigationKey(WPARAM key) {
    return key >= VK_PRIOR && key <= VK_DOWN;
}

}  // namespace widgets
