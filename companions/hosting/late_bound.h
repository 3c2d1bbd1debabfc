#pragma once

#include "hosting/error.h"
#include "hosting/ref.h"

#include <comdef.h>

#include <array>
#include <initializer_list>
#include <string>
#include <vector>

namespace hosting {

/// An automation object, called by the names of its members. Each call throws Error where the
/// member is missing or fails. Arguments are anything that a _variant_t is made from; an argument
/// that is to come back is passed as ByReference(variable).
class LateBound {
public:
    LateBound() = default;
    LateBound(IDispatch* object) : object_(object) {}  // NOLINT(google-explicit-constructor)
    explicit LateBound(const Ref<IDispatch>& object) : object_(object) {}
    /// From a value that holds an object; Nothing gives an empty handle. Throws Error otherwise.
    explicit LateBound(const _variant_t& value);

    /// A new object of the class with this ProgID or "{...}" class id.
    static LateBound Create(const std::wstring& progIdOrClassId);

    explicit operator bool() const noexcept { return object_ != nullptr; }
    [[nodiscard]] IDispatch* Get() const noexcept { return object_.Get(); }

    template <class... Arguments>
    _variant_t Call(const wchar_t* name, Arguments&&... arguments) const {
        return Invoke(name, DISPATCH_METHOD, {_variant_t(std::forward<Arguments>(arguments))...});
    }
    template <class... Arguments>
    _variant_t Get(const wchar_t* name, Arguments&&... arguments) const {
        return Invoke(name, DISPATCH_PROPERTYGET | DISPATCH_METHOD,
                      {_variant_t(std::forward<Arguments>(arguments))...});
    }
    /// A property or method result that is an object.
    template <class... Arguments>
    LateBound Object(const wchar_t* name, Arguments&&... arguments) const {
        return LateBound(Get(name, std::forward<Arguments>(arguments)...));
    }
    /// Sets a property; the last argument is the value.
    template <class... Arguments>
    void Put(const wchar_t* name, Arguments&&... arguments) const {
        Invoke(name, DISPATCH_PROPERTYPUT, {_variant_t(std::forward<Arguments>(arguments))...});
    }
    template <class... Arguments>
    void PutRef(const wchar_t* name, Arguments&&... arguments) const {
        Invoke(name, DISPATCH_PROPERTYPUTREF, {_variant_t(std::forward<Arguments>(arguments))...});
    }
    [[nodiscard]] bool Has(const wchar_t* name) const;

    /// The general form; `arguments` in the order of the declaration.
    _variant_t Invoke(const wchar_t* name, WORD kind, std::vector<_variant_t> arguments) const;

private:
    Ref<IDispatch> object_;
};

/// An argument that the callee may write to.
[[nodiscard]] _variant_t ByReference(_variant_t& variable);

/// An optional argument that is left out.
[[nodiscard]] _variant_t Omitted();

}  // namespace hosting
