#include "widgets/check_box_images.h"

#include <memory>

#include "ole/error.h"
#include "ole/handles.h"
#include "ole/theme.h"
#include "ole/units.h"

namespace widgets {

CheckBoxImages::~CheckBoxImages() {
    if (list_ != nullptr) ImageList_Destroy(list_);
}

HIMAGELIST CheckBoxImages::Get(HWND window) {
    if (list_ != nullptr) return list_;
    constexpr int count = 3;
    const int size = MulDiv(16, ole::DotsPerInch(window), 96);
    const ole::ScreenContext screen;
    const std::unique_ptr<std::remove_pointer_t<HDC>, decltype(&DeleteDC)> context(
        CreateCompatibleDC(screen.Get()), DeleteDC);
    const ole::GdiObject<HBITMAP> bitmap(CreateCompatibleBitmap(screen.Get(), size * count, size));
    {
        const ole::Selected selected(context.get(), bitmap.Get());
        const RECT all = {0, 0, size * count, size};
        FillRect(context.get(), &all, GetSysColorBrush(COLOR_WINDOW));
        for (int i = 1; i < count; ++i) {
            RECT box = {size * i + 1, 1, size * (i + 1) - 1, size - 1};
            const UINT state = i == static_cast<int>(checked) ? UINT{DFCS_CHECKED} : 0;
            DrawFrameControl(context.get(), &box, DFC_BUTTON, DFCS_BUTTONCHECK | DFCS_FLAT | state);
        }
    }
    const ole::ThemedScope themed;
    list_ = ImageList_Create(size, size, ILC_COLOR24, count, 0);
    if (list_ == nullptr) ole::Check(E_OUTOFMEMORY);
    ImageList_Add(list_, bitmap.Get(), nullptr);
    return list_;
}

}  // namespace widgets
