#pragma once

#include <windows.h>

#include <commctrl.h>

#include <memory>

#include "ole/error.h"
#include "ole/theme.h"

namespace widgets {

struct DestroysImageList {
    using pointer = HIMAGELIST;
    void operator()(HIMAGELIST list) const { ImageList_Destroy(list); }
};

/// Owns a list of images of the system.
using ImageList = std::unique_ptr<HIMAGELIST, DestroysImageList>;

/// An empty list of images of a size in pixels; `flags` are those of ImageList_Create.
inline ImageList MakeImageList(SIZE size, UINT flags) {
    const ole::ThemedScope themed;
    ImageList made(ImageList_Create(size.cx, size.cy, flags, 4, 4));
    if (made == nullptr) ole::Check(E_OUTOFMEMORY);
    return made;
}

}  // namespace widgets
