#include "explorer/outgoing_meta_links.h"

#include "explorer/errors.h"

#include <comdef.h>

namespace explorer {

namespace {

constexpr DISPID metaLinksId = 1;

BSTR MakeText(const std::wstring& text) {
    return SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
}

}  // namespace

HRESULT OutgoingMetaLinks::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT OutgoingMetaLinks::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (!info) return E_POINTER;
    *info = nullptr;
    return DISP_E_BADINDEX;
}

HRESULT OutgoingMetaLinks::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (!names || !ids) return E_POINTER;
    for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
    if (count == 0 || CompareStringOrdinal(names[0], -1, L"MetaLinks", -1, TRUE) != CSTR_EQUAL)
        return DISP_E_UNKNOWNNAME;
    ids[0] = metaLinksId;
    return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
}

HRESULT OutgoingMetaLinks::Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                                  VARIANT* result, EXCEPINFO* exception, UINT*) {
    if (id != metaLinksId || !(kind & (DISPATCH_PROPERTYGET | DISPATCH_METHOD)))
        return DISP_E_MEMBERNOTFOUND;
    if (parameters && parameters->cArgs != 0) return DISP_E_BADPARAMCOUNT;
    const hosting::Ref<IUnknown> self(this);
    try {
        _variant_t links = metaNode_.Get(L"Outgoing");
        if (result) *result = links.Detach();
        return S_OK;
    } catch (...) {
        const hosting::Error error = CurrentError();
        if (!exception) return error.Number();
        *exception = {};
        exception->scode = error.Number();
        exception->bstrDescription = MakeText(error.Description());
        exception->bstrSource = MakeText(error.Source());
        return DISP_E_EXCEPTION;
    }
}

}  // namespace explorer
