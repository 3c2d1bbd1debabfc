#pragma once

#include <comdef.h>
#include <oaidl.h>

#include <memory>
#include <string>
#include <vector>

#include "ole/ref.h"

namespace ole {

/// What the type information says of one parameter.
struct Parameter {
    std::wstring name;
    /// The type of the value itself, without VT_BYREF; enumerations and aliases are resolved.
    VARTYPE type = VT_EMPTY;
    bool byReference = false;
    bool optional = false;
    bool hasDefault = false;
    bool result = false;
    _variant_t defaultValue;
    /// For object parameters: the interface that the callee wants.
    IID interfaceId = IID_IDispatch;
};

/// One function of a dual interface, as dispatch needs it.
struct Member {
    DISPID id = DISPID_UNKNOWN;
    INVOKEKIND kind = INVOKE_FUNC;
    ULONG_PTR tableOffset = 0;
    std::vector<Parameter> parameters;
    /// The number of parameters that a caller gives: all but the result.
    UINT given = 0;
    bool HasResult() const { return given < parameters.size(); }
};

/// The members of one dual interface, read from the type information once.
class TypeTable {
public:
    explicit TypeTable(Ref<ITypeInfo> info);

    ITypeInfo& Info() const { return *info_.Get(); }

    /// The member that answers the call `flags` (DISPATCH_...) for `id`. A put answers for a putref
    /// and the reverse; a method or property is found under either flag. None where there is no
    /// such.
    const Member* Find(DISPID id, WORD flags) const;

private:
    void Read(const FUNCDESC& function);
    Parameter ReadParameter(const ELEMDESC& element, std::wstring name) const;

    Ref<ITypeInfo> info_;
    std::vector<Member> members_;
};

}  // namespace ole
