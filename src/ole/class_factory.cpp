#include "ole/class_factory.h"

#include "ole/error.h"
#include "ole/live.h"
#include "ole/server.h"

namespace ole {

namespace {

class Factory final : public Unknown<IClassFactory> {
public:
    explicit Factory(const Class& made) : class_(made) {}

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** object) override {
        if (object == nullptr) return E_POINTER;
        *object = nullptr;
        if (outer != nullptr) return CLASS_E_NOAGGREGATION;
        HRESULT result = S_OK;
        const HRESULT made = Guard({}, IID_IClassFactory,
                                   [&] { result = class_.make()->QueryInterface(id, object); });
        return FAILED(made) ? made : result;
    }

    STDMETHODIMP LockServer(BOOL lock) override {
        if (lock) {
            InterlockedIncrement(&LiveCounts().locks);
        } else {
            InterlockedDecrement(&LiveCounts().locks);
        }
        return S_OK;
    }

private:
    const Class& class_;
};

}  // namespace

HRESULT GetClassObject(REFCLSID classId, REFIID interfaceId, void** object) noexcept {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    for (const Class& entry : server.classes) {
        if (entry.id != classId) continue;
        HRESULT result = S_OK;
        const HRESULT made = Guard({}, IID_IClassFactory, [&] {
            result = Make<Factory>(entry)->QueryInterface(interfaceId, object);
        });
        return FAILED(made) ? made : result;
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

HRESULT CanUnload() noexcept {
    const Live& live = LiveCounts();
    return live.objects == 0 && live.locks == 0 ? S_OK : S_FALSE;
}

}  // namespace ole
