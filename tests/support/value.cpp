#include "support/value.h"

#include <algorithm>
#include <new>
#include <ostream>

namespace support {

Value::Value(const VARIANT& value) {
    const HRESULT copied = VariantCopy(this, Source(value));
    if (copied == DISP_E_BADVARTYPE)
        Plain() = value;
    else
        _com_util::CheckError(copied);
}

Value::Value(const std::wstring& text) {
    V_BSTR(this) = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    if (V_BSTR(this) == nullptr) throw std::bad_alloc();
    V_VT(this) = VT_BSTR;
}

Value Value::Taken(VARIANT& value) {
    Value taken;
    std::swap(taken.Plain(), value);
    return taken;
}

IUnknown* Value::Unknown() const {
    return Type() == VT_DISPATCH || Type() == VT_UNKNOWN ? V_UNKNOWN(this) : nullptr;
}

Ref<IDispatch> Value::Object() const {
    return Query<IDispatch>(Unknown());
}

std::string Value::Text() const {
    _variant_t text;
    text.ChangeType(VT_BSTR, this);
    return Utf8(V_BSTR(&text));
}

long Value::Number() const {
    _variant_t number;
    number.ChangeType(VT_I4, this);
    return V_I4(&number);
}

bool Value::Flag() const {
    _variant_t flag;
    flag.ChangeType(VT_BOOL, this);
    return V_BOOL(&flag) != VARIANT_FALSE;
}

bool operator==(const Value& a, const Value& b) {
    if (a.Type() != b.Type()) return false;
    switch (a.Type()) {
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return Query<IUnknown>(a.Unknown()).Get() == Query<IUnknown>(b.Unknown()).Get();
        case VT_EMPTY:
        case VT_NULL:
            return true;
        case VT_ERROR:
            return V_ERROR(&a) == V_ERROR(&b);
        case VT_BSTR:
            return Utf8(V_BSTR(&a)) == Utf8(V_BSTR(&b));
        default:
            if ((a.Type() & VT_ARRAY) != 0) return V_ARRAY(&a) == V_ARRAY(&b);
            return Describe(a) == Describe(b);
    }
}

std::ostream& operator<<(std::ostream& out, const Value& value) {
    return out << DescribeExactly(value);
}

Value Null() {
    Value value;
    V_VT(&value) = VT_NULL;
    return value;
}

Value ErrorValue(HRESULT code) {
    Value value;
    V_VT(&value) = VT_ERROR;
    V_ERROR(&value) = code;
    return value;
}

Value Date(double days) {
    Value value;
    V_VT(&value) = VT_DATE;
    V_DATE(&value) = days;
    return value;
}

Value Currency(long long tenThousandths) {
    Value value;
    V_VT(&value) = VT_CY;
    V_CY(&value).int64 = tenThousandths;
    return value;
}

Value NullText() {
    Value value;
    V_VT(&value) = VT_BSTR;
    V_BSTR(&value) = nullptr;
    return value;
}

namespace {

/// A one-dimensional array from index 0 that `fill` gets as plain memory.
template <class Element, class Fill>
Value ArrayOf(VARTYPE type, std::size_t count, Fill&& fill) {
    SAFEARRAY* array = SafeArrayCreateVector(type, 0, static_cast<ULONG>(count));
    if (array == nullptr) throw std::bad_alloc();
    Value value;
    V_VT(&value) = static_cast<VARTYPE>(VT_ARRAY | type);
    V_ARRAY(&value) = array;
    void* data = nullptr;
    SafeArrayAccessData(array, &data);
    fill(static_cast<Element*>(data));
    SafeArrayUnaccessData(array);
    return value;
}

}  // namespace

Value Array(const std::vector<Value>& elements) {
    return ArrayOf<VARIANT>(VT_VARIANT, elements.size(), [&](VARIANT* slots) {
        for (const Value& element : elements) VariantCopy(slots++, Source(element));
    });
}

Value Bytes(const std::vector<unsigned char>& bytes) {
    return ArrayOf<unsigned char>(VT_UI1, bytes.size(), [&](unsigned char* slots) {
        std::copy(bytes.begin(), bytes.end(), slots);
    });
}

}  // namespace support
