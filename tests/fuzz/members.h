#pragma once

#include "support/ref.h"

#include <string>
#include <vector>

namespace fuzz {

/// A parameter as the type library declares it.
struct Parameter {
    std::string name;
    VARTYPE type = VT_EMPTY;  ///< what it is or refers to; enumerations are VT_I4
    bool optional = false;
};

/// One way to call a member: its method, its property get, put or putref.
struct Member {
    std::string name;
    DISPID id = DISPID_UNKNOWN;
    WORD kind = DISPATCH_METHOD;
    std::vector<Parameter> parameters;  ///< for a put, the value is the last

    [[nodiscard]] bool IsPut() const {
        return (kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    }
    [[nodiscard]] std::string Title() const;
};

/// All members of an object's dispatch interface, by its type information.
[[nodiscard]] std::vector<Member> ReadMembers(IDispatch& object);

/// The names of the classes in a type library that can be created.
[[nodiscard]] std::vector<std::string> CreatableClasses(ITypeLib& library);
/// Those among them that a form can host.
[[nodiscard]] std::vector<std::string> ControlClasses(ITypeLib& library);

}  // namespace fuzz
