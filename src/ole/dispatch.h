#pragma once

#include <oaidl.h>

#include "ole/server.h"
#include "ole/type_table.h"
#include "ole/unknown.h"

namespace ole {

/// Calls a member of the dual interface that `table` describes, on `object` (its interface
/// pointer), as IDispatch::Invoke asks for it. In front of the platform's own call stands a layer
/// that lets callers pass what scripts pass: values, variables, by-reference variants of any type,
/// literals, Nothing, Empty, named arguments, and nothing at all for an optional one. Arguments are
/// converted to the declared type in the user's locale; what the callee changed, and only that,
/// goes back to the caller's variable, in the variable's own type where it fits.
HRESULT InvokeMember(const TypeTable& table, IUnknown* object, DISPID id, WORD flags,
                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                     UINT* badArgument) noexcept;

/// GetIDsOfNames for a type table.
HRESULT FindNames(const TypeTable& table, LPOLESTR* names, UINT count, DISPID* ids) noexcept;

/// IDispatch of the dual interface `I`, from the server's type library.
template <class I>
class Dispatch : public I {
public:
    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        if (count == nullptr) return E_POINTER;
        *count = 1;
        return S_OK;
    }

    STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
        if (info == nullptr) return E_POINTER;
        *info = nullptr;
        if (index != 0) return DISP_E_BADINDEX;
        return Guard({}, IID_IDispatch, [&] { Ref<ITypeInfo>(&Table().Info()).CopyTo(info); });
    }

    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        return FindNames(Table(), names, count, ids);
    }

    STDMETHODIMP Invoke(DISPID id, REFIID riid, LCID, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override {
        if (riid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
        return InvokeMember(Table(), static_cast<I*>(this), id, flags, parameters, result,
                            exception, badArgument);
    }

private:
    static const TypeTable& Table() {
        static const TypeTable table(TypeInfoOf(__uuidof(I)));
        return table;
    }
};

}  // namespace ole
