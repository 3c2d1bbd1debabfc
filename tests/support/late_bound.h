#pragma once

#include "support/value.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace support {

/// What came of a late-bound call: the value, or everything that a host can learn of the error.
struct Outcome {
    HRESULT result = S_OK;     ///< what GetIDsOfNames or Invoke returned
    bool nameUnknown = false;  ///< GetIDsOfNames failed, Invoke was not called
    Value value;
    HRESULT number = S_OK;  ///< Err.Number: the callee's, else `result`
    std::string description;
    std::string source;
    std::optional<UINT> badArgument;  ///< where the callee wrote one
    bool wasDeferred = false;         ///< the error was filled in on request
    bool filledOnSuccess = false;     ///< EXCEPINFO was touched though the call succeeded

    [[nodiscard]] bool Ok() const { return SUCCEEDED(result); }
    bool operator!() const { return !Ok(); }
    /// EXPECT_TRUE(outcome) says what went wrong.
    operator testing::AssertionResult() const;  // NOLINT(google-explicit-constructor)
    /// `OK 5` or `0x800A01B6 description [source]`.
    [[nodiscard]] std::string Text() const;
    /// The automation error number of 0x800A0000 + n, 0 for none, -1 for any other error.
    [[nodiscard]] int AutomationNumber() const;
    [[nodiscard]] Ref<IDispatch> Object() const { return value.Object(); }
};

std::ostream& operator<<(std::ostream& out, const Outcome& outcome);

/// One argument of a call in the form in which a certain kind of caller passes it.
class Argument {
public:
    /// By value, as a script passes an expression.
    template <class T>
    requires std::is_constructible_v<Value, const T&> Argument(const T& value)
        : value_(Value(value)) {}  // NOLINT(google-explicit-constructor)

    [[nodiscard]] const Value& Get() const { return value_; }
    [[nodiscard]] const std::string& Name() const { return name_; }

private:
    friend Argument Variable(Value& variable);
    friend Argument Reference(VARTYPE type, void* place);
    friend Argument Named(std::string name, Argument argument);

    Value value_;
    std::string name_;
};

/// A variable, as a script passes it: a by-reference variant that the callee may write to.
[[nodiscard]] Argument Variable(Value& variable);
/// A typed variable, as a compiled host passes it. It keeps its owner.
[[nodiscard]] Argument Reference(VARTYPE type, void* place);
[[nodiscard]] inline Argument Reference(BSTR& text) {
    return Reference(VT_BSTR, &text);
}
[[nodiscard]] inline Argument Reference(long& number) {
    return Reference(VT_I4, &number);
}
[[nodiscard]] inline Argument Reference(double& number) {
    return Reference(VT_R8, &number);
}
[[nodiscard]] inline Argument Reference(IDispatch*& object) {
    return Reference(VT_DISPATCH, &object);
}
/// A VARIANT_BOOL, which C++ cannot tell from other 16-bit numbers.
[[nodiscard]] inline Argument FlagReference(VARIANT_BOOL& flag) {
    return Reference(VT_BOOL, &flag);
}
/// An argument by name; named arguments come after the others.
[[nodiscard]] Argument Named(std::string name, Argument argument);

/// How a call is made where it is not the usual way.
struct CallStyle {
    WORD kind = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
    bool wantsResult = true;
    bool wantsException = true;  ///< passes an EXCEPINFO
    bool wantsBadArgument = true;
    LCID locale = LOCALE_USER_DEFAULT;
    bool namesTheValue = true;  ///< puts pass the value under DISPID_PROPERTYPUT, as they must
};

/// Calls an automation object the way hosts do, and reports in full.
class LateBound {
public:
    LateBound() = default;
    LateBound(IDispatch* object) : object_(object) {}  // NOLINT(google-explicit-constructor)
    template <class T>
    requires std::is_convertible_v<T*, IDispatch*> LateBound(const Ref<T>& object)
        : object_(object.Get()) {}  // NOLINT(google-explicit-constructor)
    explicit LateBound(const Value& value) : object_(value.Object()) {}

    [[nodiscard]] IDispatch* Get() const { return object_.Get(); }
    explicit operator bool() const { return object_ != nullptr; }

    /// As a statement that uses the result.
    template <class... Arguments>
    Outcome Call(std::string_view member, const Arguments&... arguments) const {
        return Invoke(member, {}, {Argument(arguments)...});
    }
    /// As a statement that throws the result away: no result is asked for.
    template <class... Arguments>
    Outcome Do(std::string_view member, const Arguments&... arguments) const {
        CallStyle style;
        style.kind = DISPATCH_METHOD;
        style.wantsResult = false;
        return Invoke(member, style, {Argument(arguments)...});
    }
    template <class... Arguments>
    Outcome Get(std::string_view member, const Arguments&... arguments) const {
        CallStyle style;
        style.kind = DISPATCH_PROPERTYGET;
        return Invoke(member, style, {Argument(arguments)...});
    }
    /// `object.member = value`; what stands before the value are indices.
    template <class... Arguments>
    Outcome Put(std::string_view member, const Arguments&... arguments) const {
        return Set(DISPATCH_PROPERTYPUT, member, {Argument(arguments)...});
    }
    /// `Set object.member = value`.
    template <class... Arguments>
    Outcome PutRef(std::string_view member, const Arguments&... arguments) const {
        return Set(DISPATCH_PROPERTYPUTREF, member, {Argument(arguments)...});
    }
    /// The default member.
    template <class... Arguments>
    Outcome Default(const Arguments&... arguments) const {
        return InvokeId(DISPID_VALUE, {}, {Argument(arguments)...}, {});
    }

    bool Has(std::string_view member) const;
    /// DISPID_UNKNOWN where there is no such member.
    [[nodiscard]] DISPID Id(std::string_view member) const;
    /// All elements, fetched `block` at a time. Fails the test where the enumeration fails.
    std::vector<Value> Elements(ULONG block = 1) const;

    Outcome Invoke(std::string_view member, const CallStyle& style,
                   const std::vector<Argument>& arguments) const;
    /// With named arguments only where `nameIds` has an id for each of them.
    Outcome InvokeId(DISPID id, const CallStyle& style, const std::vector<Argument>& arguments,
                     const std::vector<DISPID>& nameIds) const;

private:
    Outcome Set(WORD kind, std::string_view member, const std::vector<Argument>& arguments) const;

    Ref<IDispatch> object_;
};

}  // namespace support
