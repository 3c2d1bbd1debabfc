#pragma once

#include <oaidl.h>

#include "ole/error.h"
#include "ole/server.h"
#include "ole/type_table.h"
#include "ole/unknown.h"

namespace ole {

/// What dispatch knows of a class: its id, which names the source of errors, and the members of its
/// dual interface, read when first asked for.
struct DispatchClass {
    const CLSID& id;
    const IID& interfaceId;
    const TypeTable& (*members)();
};

/// Calls a member of the class's dual interface on `object` (its interface pointer), as
/// IDispatch::Invoke asks for it. In front of the platform's own call stands a layer that lets
/// callers pass what scripts pass: values, variables, by-reference variants of any type, literals,
/// Nothing, Empty, named arguments, and nothing at all for an optional one. Arguments are converted
/// to the declared type in the user's locale; what the callee changed, and only that, goes back to
/// the caller's variable, in the variable's own type where it fits.
HRESULT InvokeMember(const DispatchClass& type, IUnknown* object, DISPID id, WORD flags,
                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                     UINT* badArgument) noexcept;

/// GetIDsOfNames of the class's dual interface: a member, and arguments of it.
HRESULT FindNames(const DispatchClass& type, LPOLESTR* names, UINT count, DISPID* ids) noexcept;

/// IDispatch of the class `classId` with the dual interface `I`, from the server's type library.
template <class I, const GUID& classId>
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
        return Guard({}, IID_IDispatch, [&] { Ref<ITypeInfo>(&Members().Info()).CopyTo(info); });
    }

    STDMETHODIMP GetIDsOfNames(REFIID riid, LPOLESTR* names, UINT count, LCID,
                               DISPID* ids) override {
        if (riid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
        return FindNames(dispatchClass_, names, count, ids);
    }

    STDMETHODIMP Invoke(DISPID id, REFIID riid, LCID, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override {
        if (riid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
        return InvokeMember(dispatchClass_, static_cast<I*>(this), id, flags, parameters, result,
                            exception, badArgument);
    }

private:
    static const TypeTable& Members() {
        static const TypeTable table(TypeInfoOf(__uuidof(I)));
        return table;
    }
    static constexpr DispatchClass dispatchClass_ = {classId, __uuidof(I), Members};
};

}  // namespace ole
