#include "hosting/class_id.h"

#include "hosting/error.h"

namespace hosting {

CLSID FindClass(const std::wstring& progIdOrClassId) {
    CLSID id{};
    // CLSIDFromString also takes a ProgID, but may look for it in the registry alone.
    const HRESULT result = progIdOrClassId.starts_with(L'{')
                               ? CLSIDFromString(progIdOrClassId.c_str(), &id)
                               : CLSIDFromProgID(progIdOrClassId.c_str(), &id);
    if (FAILED(result)) throw Error(result, L"There is no class \"" + progIdOrClassId + L"\".");
    return id;
}

Ref<IUnknown> CreateObject(const std::wstring& progIdOrClassId) {
    const CLSID id = FindClass(progIdOrClassId);
    Ref<IUnknown> object;
    const HRESULT result =
        CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IUnknown,
                         reinterpret_cast<void**>(object.GetAddressOf()));
    Check(result, (L"creating an object of \"" + progIdOrClassId + L"\"").c_str());
    return object;
}

}  // namespace hosting
