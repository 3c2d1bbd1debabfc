#include "ole/class_info.h"

#include "ole/error.h"
#include "ole/lent.h"
#include "ole/server.h"

namespace ole {

HRESULT ClassInfoOf(REFCLSID classId, ITypeInfo** info) noexcept {
    if (info == nullptr) return E_POINTER;
    *info = nullptr;
    return Guard({}, IID_IProvideClassInfo, [&] { *info = TypeInfoOf(classId).Detach(); });
}

HRESULT DefaultSourceOf(REFCLSID classId, DWORD kind, GUID* guid) noexcept {
    if (guid == nullptr) return E_POINTER;
    *guid = GUID_NULL;
    if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
    const HRESULT result = Guard({}, IID_IProvideClassInfo2, [&] {
        *guid = DefaultInterface(*TypeInfoOf(classId).Get(), true);
    });
    return SUCCEEDED(result) && *guid == GUID_NULL ? E_FAIL : result;
}

GUID DefaultInterface(ITypeInfo& classInfo, bool source) {
    LentTypeAttributes type(classInfo);
    Check(classInfo.GetTypeAttr(type.Address()));
    const int wanted = IMPLTYPEFLAG_FDEFAULT | (source ? IMPLTYPEFLAG_FSOURCE : 0);
    for (UINT i = 0; i < type->cImplTypes; ++i) {
        int flags = 0;
        HREFTYPE reference = 0;
        Ref<ITypeInfo> info;
        Check(classInfo.GetImplTypeFlags(i, &flags));
        if ((flags & (IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE)) != wanted) continue;
        Check(classInfo.GetRefTypeOfImplType(i, &reference));
        Check(classInfo.GetRefTypeInfo(reference, info.GetAddressOf()));
        LentTypeAttributes attributes(*info.Get());
        Check(info->GetTypeAttr(attributes.Address()));
        return attributes->guid;
    }
    return GUID_NULL;
}

HRESULT ReportClassError(REFCLSID classId, REFIID interfaceId) noexcept {
    std::wstring source;
    const HRESULT known = Guard({}, interfaceId, [&] { source = ProgId(classId); });
    return ReportCurrentException(SUCCEEDED(known) ? source : std::wstring(), interfaceId);
}

}  // namespace ole
