#pragma once

#include <oaidl.h>

#include <string>
#include <vector>

namespace ole {

/// What registration and manifest say of the server's type library.
struct LibraryDescription {
    std::wstring id;
    /// Two hexadecimal numbers, as the registry has it.
    std::wstring version;
    std::wstring path;
    std::wstring help;
};
LibraryDescription DescribeLibrary();

/// What they say of each interface, and the platform class that marshals it.
struct InterfaceDescription {
    std::wstring id;
    std::wstring name;
    const wchar_t* marshaler;
};
std::vector<InterfaceDescription> DescribeInterfaces();

/// Whether the type library calls a class a control.
bool IsControl(ITypeInfo& classInfo);

}  // namespace ole
