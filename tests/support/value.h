#pragma once

#include "support/ref.h"
#include "support/text.h"

#include <comdef.h>

#include <string>
#include <utility>
#include <vector>

namespace support {

/// A variant made from whatever a test has at hand. Texts are UTF-8 or UTF-16; whole numbers are
/// VT_I4 unless they are `short`.
class Value : public _variant_t {
public:
    Value() = default;
    /// Values of types that do not exist, which tests pass on purpose, are copied as they are.
    Value(const VARIANT& value);
    Value(const Value& other) : Value(static_cast<const VARIANT&>(other)) {}
    Value(Value&& other) noexcept { std::swap(Plain(), other.Plain()); }
    Value(const char* text) : Value(Wide(text)) {}
    Value(const std::string& text) : Value(Wide(text)) {}
    Value(const wchar_t* text) : Value(std::wstring(text)) {}
    Value(const std::wstring& text);
    Value(short number) : _variant_t(number) {}
    Value(int number) : _variant_t(static_cast<long>(number)) {}
    Value(long number) : _variant_t(number) {}
    Value(double number) : _variant_t(number) {}
    Value(bool flag) : _variant_t(flag) {}
    Value(IDispatch* object) : _variant_t(object) {}
    Value(IUnknown* object) : _variant_t(object) {}
    Value(std::nullptr_t) : _variant_t(static_cast<IDispatch*>(nullptr)) {}
    template <class T>
    Value(const Ref<T>& object) : Value(object.Get()) {}

    Value& operator=(Value other) noexcept {
        std::swap(Plain(), other.Plain());
        return *this;
    }

    [[nodiscard]] VARTYPE Type() const { return V_VT(this); }
    /// The object in it; nothing where it holds none.
    [[nodiscard]] Ref<IDispatch> Object() const;
    /// The same without a reference of its own, whatever interface it is; null where it holds none.
    [[nodiscard]] IUnknown* Unknown() const;
    /// Converted as automation does; throws _com_error where that is impossible.
    [[nodiscard]] std::string Text() const;
    [[nodiscard]] long Number() const;
    [[nodiscard]] bool Flag() const;

    /// Takes over what `value` owns.
    static Value Taken(VARIANT& value);

private:
    VARIANT& Plain() { return *this; }
};

/// Same type and same value; objects by identity, texts exactly.
[[nodiscard]] bool operator==(const Value& a, const Value& b);
std::ostream& operator<<(std::ostream& out, const Value& value);

[[nodiscard]] inline Value Nothing() {
    return nullptr;
}
[[nodiscard]] inline Value Empty() {
    return {};
}
[[nodiscard]] Value Null();
[[nodiscard]] Value ErrorValue(HRESULT code);
/// An optional argument that is left out.
[[nodiscard]] inline Value Omitted() {
    return ErrorValue(DISP_E_PARAMNOTFOUND);
}
[[nodiscard]] Value Date(double days);
[[nodiscard]] Value Currency(long long tenThousandths);
/// A string pointer of null, which automation treats as an empty text.
[[nodiscard]] Value NullText();
/// An array of variants or of bytes, from index 0.
[[nodiscard]] Value Array(const std::vector<Value>& elements);
[[nodiscard]] Value Bytes(const std::vector<unsigned char>& bytes);

}  // namespace support
