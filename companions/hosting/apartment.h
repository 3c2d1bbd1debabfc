#pragma once

#include "hosting/error.h"

#include <ole2.h>

namespace hosting {

/// Makes the calling thread an apartment with OLE, while it lives. Throws Error.
class Apartment {
public:
    Apartment() { Check(OleInitialize(nullptr), L"starting OLE"); }
    ~Apartment() { OleUninitialize(); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
};

}  // namespace hosting
