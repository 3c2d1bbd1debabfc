#include "hosts/double/control.h"

#include <array>

namespace {

HINSTANCE module = nullptr;

class Factory : public hosting::ComClass<IClassFactory> {
public:
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** result) override {
        *result = nullptr;
        if (outer) return CLASS_E_NOAGGREGATION;
        return hosting::Make<DoubleControl>()->QueryInterface(iid, result);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

}  // namespace

HINSTANCE OwnModule() {
    return module;
}

hosting::Ref<ITypeLib> OwnTypeLibrary() {
    std::array<wchar_t, MAX_PATH> path{};
    GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
    hosting::Ref<ITypeLib> library;
    LoadTypeLibEx(path.data(), REGKIND_NONE, library.GetAddressOf());
    return library;
}

extern "C" {

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void*) {
    if (reason == DLL_PROCESS_ATTACH) module = instance;
    if (reason == DLL_PROCESS_DETACH) UnregisterClassW(DoubleControl::windowClass, instance);
    return TRUE;
}

HRESULT WINAPI DllGetClassObject(REFCLSID id, REFIID iid, void** result) {
    *result = nullptr;
    if (id != CLSID_DoubleControl) return CLASS_E_CLASSNOTAVAILABLE;
    return hosting::Make<Factory>()->QueryInterface(iid, result);
}

HRESULT WINAPI DllCanUnloadNow() {
    return DoubleControl::Living() == 0 ? S_OK : S_FALSE;
}
}
