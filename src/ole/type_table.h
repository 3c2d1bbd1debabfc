#pragma once

#include <comdef.h>
#include <oaidl.h>

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "ole/ref.h"

namespace ole {

/// What the type information says of one parameter.
struct Parameter {
    std::wstring name;
    /// The type of the value itself, without VT_BYREF; enumerations, aliases and classes are
    /// resolved.
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
    std::wstring name;
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
    /// Raises TYPE_E_UNSUPFORMAT for an interface with a parameter that has no automation type.
    explicit TypeTable(Ref<ITypeInfo> info);
    TypeTable(const TypeTable&) = delete;
    TypeTable& operator=(const TypeTable&) = delete;

    ITypeInfo& Info() const { return *info_.Get(); }

    /// The member that answers the call `flags` (DISPATCH_...) for `id`. A put answers for a putref
    /// and the reverse; a method or property is found under either flag. None where there is no
    /// such.
    const Member* Find(DISPID id, WORD flags) const;

    /// The id of a member, DISPID_UNKNOWN where there is none. Names are the same without case.
    DISPID IdOf(std::wstring_view member) const;

    /// The position of a named argument, which is its id; DISPID_UNKNOWN where there is none.
    DISPID PositionOf(DISPID member, std::wstring_view argument) const;

private:
    struct NameHash {
        std::size_t operator()(std::wstring_view name) const;
    };
    struct SameName {
        bool operator()(std::wstring_view a, std::wstring_view b) const;
    };

    Ref<ITypeInfo> info_;
    /// Ordered by id; members with the same id keep the order of the interface.
    std::vector<Member> members_;
    /// By the names that `members_` keeps.
    std::unordered_map<std::wstring_view, DISPID, NameHash, SameName> ids_;
};

}  // namespace ole
