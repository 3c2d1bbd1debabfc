#include "repository/com/variant.h"

#include <oleauto.h>

#include <algorithm>
#include <new>
#include <type_traits>

#include "ole/error.h"
#include "ole/object.h"
#include "ole/text.h"
#include "repository/com/failure.h"
#include "repository/com/text.h"

namespace repository::com {

using store::DataType;
using store::Value;

namespace {

/// The value itself: references followed, an object's default property taken.
_variant_t Plain(const VARIANT& value) {
    _variant_t plain;
    ole::Check(VariantCopyInd(&plain, const_cast<VARIANT*>(&value)));
    if (V_VT(&plain) == VT_UNKNOWN || V_VT(&plain) == VT_DISPATCH) {
        return Plain(ole::Object::From(plain).Value());
    }
    if (V_VT(&plain) == VT_NULL) ole::Throw(ole::Number::invalidUseOfNull);
    if (V_VT(&plain) == VT_ERROR) {
        ole::Throw(IsGiven(plain) ? ole::Number::typeMismatch : ole::Number::argumentNotOptional);
    }
    return plain;
}

/// A plain value in another type.
_variant_t ConvertedPlain(const VARIANT& value, VARTYPE type) {
    _variant_t converted;
    ole::Check(ole::ChangeType(converted, value, type));
    return converted;
}

_variant_t Converted(const VARIANT& value, VARTYPE type) {
    return ConvertedPlain(Plain(value), type);
}

/// Locks an array's elements for reading or writing.
template <class T>
class LockedElements {
public:
    explicit LockedElements(SAFEARRAY* array) : array_(array) {
        void* data = nullptr;
        ole::Check(SafeArrayAccessData(array_, &data));
        data_ = static_cast<T*>(data);
    }
    ~LockedElements() { SafeArrayUnaccessData(array_); }
    LockedElements(const LockedElements&) = delete;
    LockedElements& operator=(const LockedElements&) = delete;

    T* begin() const { return data_; }

private:
    SAFEARRAY* array_;
    T* data_ = nullptr;
};

std::size_t LengthOf(SAFEARRAY* array) {
    if (array == nullptr) return 0;
    if (SafeArrayGetDim(array) != 1) ole::Throw(ole::Number::subscriptOutOfRange);
    LONG lower = 0;
    LONG upper = -1;
    ole::Check(SafeArrayGetLBound(array, 1, &lower));
    ole::Check(SafeArrayGetUBound(array, 1, &upper));
    return static_cast<std::size_t>(upper - lower + 1);
}

/// An element of an array as a variant of its own.
_variant_t ElementAt(const VARIANT& value, LONG index) {
    _variant_t element;
    const auto type = static_cast<VARTYPE>(V_VT(&value) & VT_TYPEMASK);
    if (type == VT_VARIANT) {
        ole::Check(SafeArrayGetElement(V_ARRAY(&value), &index, &element));
    } else {
        ole::Check(SafeArrayGetElement(V_ARRAY(&value), &index, &V_UI1(&element)));
        V_VT(&element) = type;
    }
    return element;
}

store::Bytes ToBytes(const _variant_t& value) {
    const VARTYPE type = V_VT(&value);
    if ((type & VT_ARRAY) == 0) ole::Throw(ole::Number::typeMismatch);
    SAFEARRAY* array = V_ARRAY(&value);
    const std::size_t length = LengthOf(array);
    if (length == 0) return {};
    store::Bytes bytes(length);
    if (type == (VT_ARRAY | VT_UI1)) {
        const LockedElements<std::uint8_t> elements(array);
        std::copy_n(elements.begin(), length, bytes.begin());
        return bytes;
    }
    LONG at = 0;
    ole::Check(SafeArrayGetLBound(array, 1, &at));
    for (std::uint8_t& byte : bytes) {
        const _variant_t element = ElementAt(value, at);
        if (V_VT(&element) == VT_DISPATCH || V_VT(&element) == VT_UNKNOWN) {
            ole::Throw(ole::Number::typeMismatch);
        }
        const _variant_t converted = ConvertedPlain(element, VT_UI1);
        byte = V_UI1(&converted);
        ++at;
    }
    return bytes;
}

_variant_t ToArray(const store::Bytes& bytes) {
    _variant_t result;
    V_ARRAY(&result) = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
    if (V_ARRAY(&result) == nullptr) throw std::bad_alloc();
    V_VT(&result) = VT_ARRAY | VT_UI1;
    const LockedElements<std::uint8_t> elements(V_ARRAY(&result));
    std::copy(bytes.begin(), bytes.end(), elements.begin());
    return result;
}

VARTYPE VarTypeOf(DataType type) {
    switch (type) {
        case DataType::boolean:
            return VT_BOOL;
        case DataType::byte:
            return VT_UI1;
        case DataType::integer:
            return VT_I2;
        case DataType::longInteger:
            return VT_I4;
        case DataType::longLong:
            return VT_I8;
        case DataType::singleFloat:
            return VT_R4;
        case DataType::doubleFloat:
            return VT_R8;
        case DataType::currency:
            return VT_CY;
        case DataType::date:
            return VT_DATE;
        case DataType::string:
            return VT_BSTR;
        case DataType::blob:
        case DataType::variant:
            break;
    }
    return VT_EMPTY;
}

_variant_t AsWritten(const Value& value) {
    _variant_t result;
    const auto put = [&](VARTYPE type, auto& member, auto number) {
        V_VT(&result) = type;
        member = number;
    };
    std::visit(
        [&](const auto& held) {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, bool>) {
                put(VT_BOOL, V_BOOL(&result), held ? VARIANT_TRUE : VARIANT_FALSE);
            } else if constexpr (std::is_same_v<Held, std::uint8_t>) {
                put(VT_UI1, V_UI1(&result), held);
            } else if constexpr (std::is_same_v<Held, std::int16_t>) {
                put(VT_I2, V_I2(&result), held);
            } else if constexpr (std::is_same_v<Held, std::int32_t>) {
                put(VT_I4, V_I4(&result), held);
            } else if constexpr (std::is_same_v<Held, std::int64_t>) {
                put(VT_I8, V_I8(&result), held);
            } else if constexpr (std::is_same_v<Held, float>) {
                put(VT_R4, V_R4(&result), held);
            } else if constexpr (std::is_same_v<Held, double>) {
                put(VT_R8, V_R8(&result), held);
            } else if constexpr (std::is_same_v<Held, store::Currency>) {
                put(VT_CY, V_CY(&result).int64, held.tenThousandths);
            } else if constexpr (std::is_same_v<Held, store::Date>) {
                put(VT_DATE, V_DATE(&result), held.days);
            } else if constexpr (std::is_same_v<Held, std::string>) {
                put(VT_BSTR, V_BSTR(&result), ToResult(held));
            } else if constexpr (std::is_same_v<Held, store::Bytes>) {
                result = ToArray(held);
            }
        },
        value);
    return result;
}

std::string TextIn(const _variant_t& value) {
    const BSTR text = V_BSTR(&value);
    return text == nullptr ? std::string() : Narrow({text, SysStringLen(text)});
}

/// A value in the type that it has.
Value AsGiven(const _variant_t& value) {
    switch (V_VT(&value)) {
        case VT_EMPTY:
            return store::Empty();
        case VT_BOOL:
            return V_BOOL(&value) != VARIANT_FALSE;
        case VT_UI1:
            return V_UI1(&value);
        case VT_I2:
            return V_I2(&value);
        case VT_I4:
            return static_cast<std::int32_t>(V_I4(&value));
        case VT_I8:
            return static_cast<std::int64_t>(V_I8(&value));
        case VT_R4:
            return V_R4(&value);
        case VT_R8:
            return V_R8(&value);
        case VT_CY:
            return store::Currency{V_CY(&value).int64};
        case VT_DATE:
            return store::Date{V_DATE(&value)};
        case VT_BSTR:
            return TextIn(value);
        case VT_I1:
            return AsGiven(ConvertedPlain(value, VT_I2));
        case VT_UI2:
        case VT_INT:
            return AsGiven(ConvertedPlain(value, VT_I4));
        case VT_UI4:
        case VT_UINT:
        case VT_UI8:
            return AsGiven(ConvertedPlain(value, VT_I8));
        case VT_DECIMAL:
            return AsGiven(ConvertedPlain(value, VT_R8));
        default:
            return ToBytes(value);
    }
}

}  // namespace

bool IsGiven(const VARIANT& argument) {
    return V_VT(&argument) != VT_ERROR || V_ERROR(&argument) != DISP_E_PARAMNOTFOUND;
}

_variant_t PlainValue(const VARIANT& argument) {
    return Plain(argument);
}

std::string TextOf(const VARIANT& argument) {
    if (V_VT(&argument) == VT_BSTR && V_BSTR(&argument) != nullptr) {
        return Narrow({V_BSTR(&argument), SysStringLen(V_BSTR(&argument))});
    }
    return TextIn(Converted(argument, VT_BSTR));
}

long LongOf(const VARIANT& argument) {
    const _variant_t number = Converted(argument, VT_I4);
    return V_I4(&number);
}

bool FlagOf(const VARIANT& argument) {
    const _variant_t flag = Converted(argument, VT_BOOL);
    return V_BOOL(&flag) != VARIANT_FALSE;
}

bool IsArray(const VARIANT& argument) {
    return (V_VT(&argument) & VT_ARRAY) != 0;
}

std::vector<std::string> TextsOf(const VARIANT& argument) {
    const _variant_t array = Plain(argument);
    std::vector<std::string> texts(LengthOf(V_ARRAY(&array)));
    LONG at = 0;
    if (!texts.empty()) ole::Check(SafeArrayGetLBound(V_ARRAY(&array), 1, &at));
    for (std::string& text : texts) text = TextOf(ElementAt(array, at++));
    return texts;
}

_variant_t ToArray(const std::vector<std::string>& texts) {
    _variant_t result;
    V_ARRAY(&result) = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(texts.size()));
    if (V_ARRAY(&result) == nullptr) throw std::bad_alloc();
    V_VT(&result) = VT_ARRAY | VT_VARIANT;
    const LockedElements<VARIANT> elements(V_ARRAY(&result));
    for (std::size_t i = 0; i < texts.size(); ++i) {
        elements.begin()[i] = _variant_t(ToBstr(texts[i])).Detach();
    }
    return result;
}

std::string TextOr(const VARIANT& argument, const std::string& otherwise) {
    return IsGiven(argument) ? TextOf(argument) : otherwise;
}

_variant_t ToVariant(const Value& value, const store::MetaProperty& property) {
    _variant_t result = AsWritten(value);
    const VARTYPE wanted = VarTypeOf(property.type->dataType);
    if (wanted == VT_EMPTY || store::Fits(value, property.type->dataType)) return result;
    _variant_t converted;
    return SUCCEEDED(ole::ChangeType(converted, result, wanted)) ? converted : result;
}

Value ValueAsGiven(const VARIANT& value) {
    return AsGiven(Plain(value));
}

Value ToValue(const _variant_t& plain, const store::MetaProperty& property) {
    const DataType type = property.type->dataType;
    if (V_VT(&plain) == VT_EMPTY) return store::Empty();
    const bool isEmptyText = V_VT(&plain) == VT_BSTR && SysStringLen(V_BSTR(&plain)) == 0;
    const bool isText = type == DataType::string && !property.type->enumeration;
    if (isEmptyText && !isText && type != DataType::variant) return store::Empty();
    if (type == DataType::variant) return AsGiven(plain);
    if (type == DataType::blob) return ToBytes(plain);
    return AsGiven(ConvertedPlain(plain, VarTypeOf(type)));
}

VARIANT_BOOL ToResult(bool flag) {
    return flag ? VARIANT_TRUE : VARIANT_FALSE;
}

}  // namespace repository::com
