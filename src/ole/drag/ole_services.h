#pragma once

#include <windows.h>

#include <ole2.h>

#include "ole/error.h"

namespace ole {

/// Keeps what drag and drop needs up on the thread while it lives, whether or not the host has
/// initialized more than COM. Errors: the platform's.
class OleServices {
public:
    OleServices() { Check(OleInitialize(nullptr)); }
    OleServices(const OleServices&) = delete;
    OleServices& operator=(const OleServices&) = delete;
    ~OleServices() { OleUninitialize(); }
};

}  // namespace ole
