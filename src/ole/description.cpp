#include "ole/description.h"

#include "ole/error.h"
#include "ole/lent.h"
#include "ole/server.h"
#include "ole/text.h"

namespace ole {

namespace {

constexpr wchar_t dualMarshaler[] = L"{00020424-0000-0000-C000-000000000046}";
constexpr wchar_t dispatchMarshaler[] = L"{00020420-0000-0000-C000-000000000046}";

std::wstring Hexadecimal(unsigned number) {
    wchar_t text[9];
    wsprintfW(text, L"%x", number);
    return text;
}

}  // namespace

LibraryDescription DescribeLibrary() {
    LentLibraryAttributes attributes(TypeLibrary());
    Check(TypeLibrary().GetLibAttr(attributes.Address()));
    _bstr_t help;
    Check(
        TypeLibrary().GetDocumentation(MEMBERID_NIL, nullptr, help.GetAddress(), nullptr, nullptr));
    return {GuidText(attributes->guid),
            Hexadecimal(attributes->wMajorVerNum) + L"." + Hexadecimal(attributes->wMinorVerNum),
            ModulePath(), ToWide(help)};
}

std::vector<InterfaceDescription> DescribeInterfaces() {
    std::vector<InterfaceDescription> found;
    const UINT count = TypeLibrary().GetTypeInfoCount();
    for (UINT i = 0; i < count; ++i) {
        Ref<ITypeInfo> info;
        Check(TypeLibrary().GetTypeInfo(i, info.GetAddressOf()));
        LentTypeAttributes attributes(*info.Get());
        Check(info->GetTypeAttr(attributes.Address()));
        if (attributes->typekind != TKIND_DISPATCH) continue;
        const bool dual = (attributes->wTypeFlags & TYPEFLAG_FDUAL) != 0;
        found.push_back({GuidText(attributes->guid), NameOf(*info.Get()),
                         dual ? dualMarshaler : dispatchMarshaler});
    }
    return found;
}

bool IsControl(ITypeInfo& classInfo) {
    LentTypeAttributes attributes(classInfo);
    Check(classInfo.GetTypeAttr(attributes.Address()));
    return (attributes->wTypeFlags & TYPEFLAG_FCONTROL) != 0;
}

}  // namespace ole
