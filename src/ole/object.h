#pragma once

#include <comdef.h>
#include <oaidl.h>

#include <array>
#include <concepts>
#include <optional>
#include <string>

#include "ole/ref.h"

namespace ole {

/// An argument or result slot of a late-bound call that borrows what it holds: whoever makes it
/// keeps the string or object alive for the length of the call.
class Argument {
public:
    Argument(const VARIANT& value) : value_(value) {}
    Argument(const _bstr_t& text) { SetText(const_cast<BSTR>(static_cast<const wchar_t*>(text))); }
    Argument(BSTR text) { SetText(text); }
    Argument(IDispatch* object) {
        V_VT(&value_) = VT_DISPATCH;
        V_DISPATCH(&value_) = object;
    }
    Argument(std::same_as<bool> auto flag) {
        V_VT(&value_) = VT_BOOL;
        V_BOOL(&value_) = flag ? VARIANT_TRUE : VARIANT_FALSE;
    }
    Argument(std::same_as<long> auto number) {
        V_VT(&value_) = VT_I4;
        V_I4(&value_) = number;
    }
    Argument(const class Object& object);
    // Texts that would have to be copied first.
    Argument(const wchar_t*) = delete;
    Argument(const char*) = delete;

    const VARIANT& Value() const { return value_; }

private:
    void SetText(BSTR text) {
        V_VT(&value_) = VT_BSTR;
        V_BSTR(&value_) = text;
    }
    VARIANT value_ = {};
};

/// A late-bound object: members are called by name, as a script does it. Holds a counted reference.
/// Every call throws the callee's own error, or 438 for an unknown member, 13 and 6 for values that
/// do not fit, 91 when there is no object. Copies refer to the same object.
class Object {
public:
    Object() = default;
    Object(IDispatch* object) : object_(object) {}
    Object(Ref<IDispatch> object) : object_(std::move(object)) {}

    /// The object that a value holds. Empty and Nothing give no object; anything else that is no
    /// automation object raises 424.
    static Object From(const VARIANT& value);

    explicit operator bool() const { return object_ != nullptr; }
    IDispatch* Get() const { return object_.Get(); }

    /// Reads a property or calls a method with positional arguments.
    template <class... Arguments>
    _variant_t Call(const wchar_t* member, const Arguments&... arguments) const {
        auto reversed = Reversed(arguments...);
        return Invoke(member, reversed.data(), reversed.size());
    }

    /// As `Call`, where the result must be an object or Nothing; raises 424 for anything else.
    template <class... Arguments>
    Object CallForObject(const wchar_t* member, const Arguments&... arguments) const {
        return From(Call(member, arguments...));
    }

    /// Assigns a property: by value, or for an object by reference. An object goes the other way
    /// where the callee only has that.
    void Put(const wchar_t* member, const Argument& value) const {
        Assign(member, value.Value(), DISPATCH_PROPERTYPUT);
    }
    void PutRef(const wchar_t* member, const Object& value) const {
        Assign(member, Argument(value).Value(), DISPATCH_PROPERTYPUTREF);
    }

    /// The default member, with arguments: a collection's look-up.
    template <class... Arguments>
    _variant_t Value(const Arguments&... arguments) const {
        auto reversed = Reversed(arguments...);
        return InvokeId(DISPID_VALUE, reversed.data(), reversed.size());
    }

    /// Runs `visit(Object)` for each element of a collection, in its order. Elements are fetched in
    /// blocks. An element that is no object raises 424.
    template <class Visit>
    void Each(Visit&& visit) const;

    friend bool operator==(const Object& a, const Object& b) {
        return SameObject(a.Get(), b.Get());
    }

private:
    template <class... Arguments>
    static std::array<VARIANT, sizeof...(Arguments)> Reversed(const Arguments&... arguments) {
        std::array<VARIANT, sizeof...(Arguments)> reversed;
        [[maybe_unused]] std::size_t next = sizeof...(Arguments);
        ((reversed[--next] = Argument(arguments).Value()), ...);
        return reversed;
    }

    /// The reference that a call holds from its first step to its last: the callee may make this
    /// handle refer to another object. Raises 91.
    Ref<IDispatch> Held() const;
    _variant_t Invoke(const wchar_t* member, VARIANT* reversed, std::size_t count) const;
    _variant_t InvokeId(DISPID id, VARIANT* reversed, std::size_t count) const;
    void Assign(const wchar_t* member, VARIANT value, WORD flags) const;

    friend class Enumeration;
    friend class RepeatedCall;

    Ref<IDispatch> object_;
};

/// Hands an object, or none, to a caller who owns it then.
inline void Give(const Object& object, IDispatch** to) {
    *to = Ref<IDispatch>(object.Get()).Detach();
}

inline Argument::Argument(const Object& object) : Argument(object.Get()) {}

/// A member of one object that is called again and again: its id is asked for once.
class RepeatedCall {
public:
    RepeatedCall(const Object& object, const wchar_t* name) : object_(object), name_(name) {}

    /// As `Object::Call`.
    template <class... Arguments>
    _variant_t Call(const Arguments&... arguments) {
        auto reversed = Object::Reversed(arguments...);
        return Invoke(reversed.data(), reversed.size());
    }

private:
    _variant_t Invoke(VARIANT* reversed, std::size_t count);

    Object object_;
    const wchar_t* name_;
    std::optional<DISPID> id_;
};

/// Walks an automation enumeration in blocks.
class Enumeration {
public:
    /// Asks the collection for its enumerator. Errors: 91 for no object, 438 where it has none.
    explicit Enumeration(const Object& collection);
    ~Enumeration();
    Enumeration(const Enumeration&) = delete;
    Enumeration& operator=(const Enumeration&) = delete;

    /// Moves the next element into `element`; false at the end.
    bool Next(_variant_t& element);

private:
    static constexpr ULONG blockSize = 32;

    void Fetch();

    Ref<IEnumVARIANT> elements_;
    std::array<VARIANT, blockSize> block_ = {};
    ULONG fetched_ = 0;
    ULONG used_ = 0;
    bool ended_ = false;
};

template <class Visit>
void Object::Each(Visit&& visit) const {
    Enumeration elements(*this);
    _variant_t element;
    while (elements.Next(element)) visit(From(element));
}

}  // namespace ole
