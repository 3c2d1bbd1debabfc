#include "support/fake_property_bag.h"

namespace support {

STDMETHODIMP FakePropertyBag::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (!MayCall("QueryInterface")) return RPC_E_DISCONNECTED;
    if (iid != __uuidof(IUnknown) && iid != __uuidof(IPropertyBag)) return E_NOINTERFACE;
    *object = static_cast<IPropertyBag*>(this);
    AddRef();
    return S_OK;
}

STDMETHODIMP FakePropertyBag::Read(LPCOLESTR name, VARIANT* value, IErrorLog*) {
    if (name == nullptr || value == nullptr) return E_POINTER;
    if (!MayCall("Read")) return RPC_E_DISCONNECTED;
    const std::string key = Utf8(std::wstring_view(name));
    log.Call("bag", "Read", "Read(\"" + key + "\")");
    if (readResult != S_OK) return readResult;
    const auto found = values.find(key);
    if (found == values.end()) return E_INVALIDARG;
    const VARTYPE wanted = V_VT(value);
    VariantClear(value);
    if (wanted == VT_EMPTY) return VariantCopy(value, Source(found->second));
    return VariantChangeType(value, Source(found->second), 0, wanted);
}

STDMETHODIMP FakePropertyBag::Write(LPCOLESTR name, VARIANT* value) {
    if (name == nullptr || value == nullptr) return E_POINTER;
    if (!MayCall("Write")) return RPC_E_DISCONNECTED;
    const std::string key = Utf8(std::wstring_view(name));
    log.Call("bag", "Write", "Write(\"" + key + "\", " + Describe(*value) + ')');
    if (writeResult != S_OK) return writeResult;
    values[key] = Value(*value);
    return S_OK;
}

Ref<IStorage> NewStorage() {
    Ref<ILockBytes> bytes;
    Ref<IStorage> storage;
    if (SUCCEEDED(CreateILockBytesOnHGlobal(nullptr, TRUE, bytes.GetAddressOf())))
        StgCreateDocfileOnILockBytes(bytes.Get(),
                                     STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0,
                                     storage.GetAddressOf());
    return storage;
}

}  // namespace support
