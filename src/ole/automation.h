#pragma once

#include <ocidl.h>

#include "ole/class_info.h"
#include "ole/dispatch.h"
#include "ole/error.h"
#include "ole/unknown.h"

namespace ole {

/// An object of the class `classId` of the type library, with its default dual interface `I`, class
/// information and rich errors.
template <class I, const GUID& classId, class... More>
class Automation
    : public Unknown<Dispatch<I, classId>, ISupportErrorInfo, IProvideClassInfo2, More...> {
public:
    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID id) override {
        return id == __uuidof(I) ? S_OK : S_FALSE;
    }
    STDMETHODIMP GetClassInfo(ITypeInfo** info) override { return ClassInfoOf(classId, info); }
    STDMETHODIMP GetGUID(DWORD kind, GUID* guid) override {
        return DefaultSourceOf(classId, kind, guid);
    }

protected:
    /// What every member of `I` does: runs `work`, keeps the object alive meanwhile, and turns an
    /// exception into a rich error whose source is "Library.Class".
    template <class Work>
    HRESULT Run(Work&& work) noexcept {
        const Ref<IUnknown> kept = static_cast<I*>(this);
        try {
            work();
            return S_OK;
        } catch (...) {
            return ReportClassError(classId, __uuidof(I));
        }
    }
};

}  // namespace ole
