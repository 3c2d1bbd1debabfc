#include "ole/ref.h"

#include <objbase.h>

namespace ole {

bool SameObject(IUnknown* a, IUnknown* b) {
    if (a == b) return true;
    return Query<IUnknown>(a).Get() == Query<IUnknown>(b).Get();
}

std::wstring GuidText(const GUID& guid) {
    wchar_t text[40] = {};
    StringFromGUID2(guid, text, 40);
    return text;
}

}  // namespace ole
