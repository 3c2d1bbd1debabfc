#pragma once

#include <repository.h>

#include "ole/automation.h"

namespace repository::com {

/// `OrvaneRepository.UUIDGenerator`.
class UUIDGenerator final : public ole::Automation<_UUIDGenerator, CLSID_UUIDGenerator> {
public:
    /// A GUID in registry form.
    STDMETHODIMP GetUUID(BSTR* result) override;
};

}  // namespace repository::com
