#include "explorer/automation.h"

namespace explorer {

std::wstring TextOf(const _variant_t& value) {
    if (value.vt == VT_EMPTY || value.vt == VT_NULL) return {};
    const _bstr_t text(value);
    return {static_cast<const wchar_t*>(text), text.length()};
}

std::wstring CaptionOf(const hosting::LateBound& object) {
    const std::wstring name = TextOf(object.Get(L"name"));
    return name.empty() ? TextOf(object.Get(L"identifier")) : name;
}

bool IsBuiltIn(const hosting::LateBound& metaNode) {
    const std::wstring name = TextOf(metaNode.Get(L"name"));
    return name == L"MetaNode" || name == L"MetaLink" || name == L"MetaProperty";
}

bool IsSame(const hosting::LateBound& left, const hosting::LateBound& right) {
    const auto leftIdentity = hosting::Query<IUnknown>(left.Get());
    const auto rightIdentity = hosting::Query<IUnknown>(right.Get());
    // Two ComPtr of mingw-w64 compare as Booleans.
    return leftIdentity.Get() == rightIdentity.Get();
}

}  // namespace explorer
