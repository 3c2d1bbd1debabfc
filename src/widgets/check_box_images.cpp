#include "widgets/check_box_images.h"

#include <uxtheme.h>
#include <vsstyle.h>

#include <utility>

#include "ole/error.h"
#include "ole/handles.h"
#include "ole/owned.h"
#include "ole/theme.h"
#include "ole/units.h"

namespace widgets {

namespace {

/// As the lists of the same system look, themed or not.
void DrawCheckBox(HTHEME theme, HDC context, RECT box, bool checked) {
    if (theme != nullptr) {
        const int state = checked ? CBS_CHECKEDNORMAL : CBS_UNCHECKEDNORMAL;
        DrawThemeBackground(theme, context, BP_CHECKBOX, state, &box, nullptr);
    } else {
        const UINT state = checked ? UINT{DFCS_CHECKED} : 0;
        DrawFrameControl(context, &box, DFC_BUTTON, DFCS_BUTTONCHECK | DFCS_FLAT | state);
    }
}

}  // namespace

HIMAGELIST CheckBoxImages::Get(HWND window) {
    if (list_ != nullptr) return list_.get();
    constexpr int count = 3;
    const int dpi = ole::DotsPerInch(window);
    const int size = MulDiv(16, dpi, 96);
    const int side = MulDiv(13, dpi, 96);
    const ole::ScreenContext screen;
    const ole::MemoryContext context;
    const ole::GdiObject<HBITMAP> bitmap(CreateCompatibleBitmap(screen.Get(), size * count, size));
    {
        const ole::ThemedScope themed;
        // Not the window's: it would draw itself with what was opened for it last.
        const ole::Owned<HTHEME, &CloseThemeData> theme(OpenThemeData(nullptr, L"BUTTON"));
        const ole::Selected selected(context.Get(), bitmap.Get());
        const RECT all = {0, 0, size * count, size};
        FillRect(context.Get(), &all, GetSysColorBrush(COLOR_WINDOW));
        for (int i = 1; i < count; ++i) {
            const int left = size * i + (size - side) / 2;
            const int top = (size - side) / 2;
            DrawCheckBox(theme.get(), context.Get(), {left, top, left + side, top + side}, i == 2);
        }
    }
    ImageList made = MakeImageList({size, size}, ILC_COLOR24);
    if (ImageList_Add(made.get(), bitmap.Get(), nullptr) < 0) ole::Check(E_OUTOFMEMORY);
    list_ = std::move(made);
    return list_.get();
}

}  // namespace widgets
