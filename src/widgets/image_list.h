#pragma once

#include <windows.h>

#include <commctrl.h>

#include "ole/error.h"
#include "ole/owned.h"
#include "ole/theme.h"

namespace widgets {

using ImageList = ole::Owned<HIMAGELIST, &ImageList_Destroy>;

/// An empty list of images of a size in pixels; `flags` are those of ImageList_Create.
inline ImageList MakeImageList(SIZE size, UINT flags) {
    const ole::ThemedScope themed;
    ImageList made(ImageList_Create(size.cx, size.cy, flags, 4, 4));
    if (made == nullptr) ole::Check(E_OUTOFMEMORY);
    return made;
}

}  // namespace widgets
