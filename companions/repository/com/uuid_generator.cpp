#include "repository/com/uuid_generator.h"

#include <comdef.h>

#include "ole/error.h"
#include "ole/ref.h"

namespace repository::com {

STDMETHODIMP UUIDGenerator::GetUUID(BSTR* result) {
    return Run([&] {
        GUID guid = {};
        ole::Check(CoCreateGuid(&guid));
        *result = _bstr_t(ole::GuidText(guid).c_str()).Detach();
    });
}

}  // namespace repository::com
