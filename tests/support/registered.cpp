#include "support/registered.h"

namespace support {

LateBound CreateRegistered(const std::wstring& className) {
    Ref<IDispatch> made;
    CLSID id = {};
    const std::wstring name = L"OrvaneControls." + className;
    if (FAILED(CLSIDFromProgID(name.c_str(), &id)) ||
        FAILED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                reinterpret_cast<void**>(made.GetAddressOf())))) {
        ADD_FAILURE() << Utf8(name) << " is not registered: regsvr32 OrvaneControls.dll";
    }
    return made;
}

}  // namespace support
