#include "widgets/check_box_images.h"

#include <utility>

#include "ole/error.h"
#include "ole/handles.h"
#include "ole/units.h"

namespace widgets {

HIMAGELIST CheckBoxImages::Get(HWND window) {
    if (list_ != nullptr) return list_.get();
    constexpr int count = 3;
    const int size = MulDiv(16, ole::DotsPerInch(window), 96);
    const ole::ScreenContext screen;
    const ole::MemoryContext context;
    const ole::GdiObject<HBITMAP> bitmap(CreateCompatibleBitmap(screen.Get(), size * count, size));
    {
        const ole::Selected selected(context.Get(), bitmap.Get());
        const RECT all = {0, 0, size * count, size};
        FillRect(context.Get(), &all, GetSysColorBrush(COLOR_WINDOW));
        for (int i = 1; i < count; ++i) {
            RECT box = {size * i + 1, 1, size * (i + 1) - 1, size - 1};
            const UINT state = i == 2 ? UINT{DFCS_CHECKED} : 0;
            DrawFrameControl(context.Get(), &box, DFC_BUTTON, DFCS_BUTTONCHECK | DFCS_FLAT | state);
        }
    }
    ImageList made = MakeImageList({size, size}, ILC_COLOR24);
    if (ImageList_Add(made.get(), bitmap.Get(), nullptr) < 0) ole::Check(E_OUTOFMEMORY);
    list_ = std::move(made);
    return list_.get();
}

}  // namespace widgets
