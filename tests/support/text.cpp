#include "support/text.h"

#include "support/double.h"
#include "support/ref.h"

#include <comdef.h>

#include <array>
#include <cstdio>
#include <utility>

namespace support {

std::wstring Wide(std::string_view utf8) {
    const int size = static_cast<int>(utf8.size());
    const int needed = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(needed), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), needed);
    return wide;
}

std::string Utf8(std::wstring_view text) {
    const int size = static_cast<int>(text.size());
    const int needed =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(needed), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), size, utf8.data(), needed, nullptr, nullptr);
    return utf8;
}

std::string Utf8(BSTR text) {
    return Utf8(std::wstring_view(text != nullptr ? text : L"", SysStringLen(text)));
}

bool SameName(std::wstring_view a, std::wstring_view b) {
    return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(),
                                static_cast<int>(b.size()), TRUE) == CSTR_EQUAL;
}

namespace {

constexpr std::array typeNames = {
    std::pair{VT_EMPTY, "Empty"},
    std::pair{VT_NULL, "Null"},
    std::pair{VT_I2, "I2"},
    std::pair{VT_I4, "I4"},
    std::pair{VT_R4, "R4"},
    std::pair{VT_R8, "R8"},
    std::pair{VT_CY, "CY"},
    std::pair{VT_DATE, "DATE"},
    std::pair{VT_BSTR, "BSTR"},
    std::pair{VT_DISPATCH, "DISPATCH"},
    std::pair{VT_ERROR, "ERROR"},
    std::pair{VT_BOOL, "BOOL"},
    std::pair{VT_VARIANT, "VARIANT"},
    std::pair{VT_UNKNOWN, "UNKNOWN"},
    std::pair{VT_DECIMAL, "DECIMAL"},
    std::pair{VT_I1, "I1"},
    std::pair{VT_UI1, "UI1"},
    std::pair{VT_UI2, "UI2"},
    std::pair{VT_UI4, "UI4"},
    std::pair{VT_I8, "I8"},
    std::pair{VT_UI8, "UI8"},
    std::pair{VT_INT, "INT"},
    std::pair{VT_UINT, "UINT"},
    std::pair{VT_VOID, "VOID"},
    std::pair{VT_HRESULT, "HRESULT"},
    std::pair{VT_PTR, "PTR"},
    std::pair{VT_SAFEARRAY, "SAFEARRAY"},
    std::pair{VT_CARRAY, "CARRAY"},
    std::pair{VT_USERDEFINED, "USERDEFINED"},
    std::pair{VT_LPSTR, "LPSTR"},
    std::pair{VT_LPWSTR, "LPWSTR"},
    std::pair{VT_RECORD, "RECORD"},
};

constexpr std::array resultNames = {
    std::pair{S_OK, "S_OK"},
    std::pair{S_FALSE, "S_FALSE"},
    std::pair{E_NOTIMPL, "E_NOTIMPL"},
    std::pair{E_NOINTERFACE, "E_NOINTERFACE"},
    std::pair{E_POINTER, "E_POINTER"},
    std::pair{E_ABORT, "E_ABORT"},
    std::pair{E_FAIL, "E_FAIL"},
    std::pair{E_UNEXPECTED, "E_UNEXPECTED"},
    std::pair{E_ACCESSDENIED, "E_ACCESSDENIED"},
    std::pair{E_OUTOFMEMORY, "E_OUTOFMEMORY"},
    std::pair{E_INVALIDARG, "E_INVALIDARG"},
    std::pair{DISP_E_UNKNOWNINTERFACE, "DISP_E_UNKNOWNINTERFACE"},
    std::pair{DISP_E_MEMBERNOTFOUND, "DISP_E_MEMBERNOTFOUND"},
    std::pair{DISP_E_PARAMNOTFOUND, "DISP_E_PARAMNOTFOUND"},
    std::pair{DISP_E_TYPEMISMATCH, "DISP_E_TYPEMISMATCH"},
    std::pair{DISP_E_UNKNOWNNAME, "DISP_E_UNKNOWNNAME"},
    std::pair{DISP_E_NONAMEDARGS, "DISP_E_NONAMEDARGS"},
    std::pair{DISP_E_BADVARTYPE, "DISP_E_BADVARTYPE"},
    std::pair{DISP_E_EXCEPTION, "DISP_E_EXCEPTION"},
    std::pair{DISP_E_OVERFLOW, "DISP_E_OVERFLOW"},
    std::pair{DISP_E_BADINDEX, "DISP_E_BADINDEX"},
    std::pair{DISP_E_UNKNOWNLCID, "DISP_E_UNKNOWNLCID"},
    std::pair{DISP_E_ARRAYISLOCKED, "DISP_E_ARRAYISLOCKED"},
    std::pair{DISP_E_BADPARAMCOUNT, "DISP_E_BADPARAMCOUNT"},
    std::pair{DISP_E_PARAMNOTOPTIONAL, "DISP_E_PARAMNOTOPTIONAL"},
    std::pair{DISP_E_NOTACOLLECTION, "DISP_E_NOTACOLLECTION"},
    std::pair{RPC_E_DISCONNECTED, "RPC_E_DISCONNECTED"},
    std::pair{RPC_E_WRONG_THREAD, "RPC_E_WRONG_THREAD"},
    std::pair{CO_E_OBJNOTCONNECTED, "CO_E_OBJNOTCONNECTED"},
    std::pair{REGDB_E_CLASSNOTREG, "REGDB_E_CLASSNOTREG"},
    std::pair{CLASS_E_NOAGGREGATION, "CLASS_E_NOAGGREGATION"},
    std::pair{CLASS_E_CLASSNOTAVAILABLE, "CLASS_E_CLASSNOTAVAILABLE"},
    std::pair{CONNECT_E_NOCONNECTION, "CONNECT_E_NOCONNECTION"},
    std::pair{CONNECT_E_CANNOTCONNECT, "CONNECT_E_CANNOTCONNECT"},
};

constexpr std::size_t longestShownText = 200;

/// An object of a class that has a type library by its class, with its key where it has one.
std::string DescribeRecord(IUnknown* object) {
    const auto described = Query<IProvideClassInfo>(object);
    const auto dispatch = Query<IDispatch>(object);
    Ref<ITypeInfo> info;
    _bstr_t name;
    if (!described || !dispatch || FAILED(described->GetClassInfo(info.GetAddressOf())) ||
        FAILED(
            info->GetDocumentation(MEMBERID_NIL, name.GetAddress(), nullptr, nullptr, nullptr))) {
        return "object";
    }
    wchar_t keyName[] = L"key";
    wchar_t* names = keyName;
    DISPID id = DISPID_UNKNOWN;
    DISPPARAMS none = {};
    _variant_t key;
    if (FAILED(dispatch->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id)) ||
        FAILED(dispatch->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                &key, nullptr, nullptr)) ||
        V_VT(&key) != VT_BSTR) {
        return Utf8(name.GetBSTR());
    }
    return Utf8(name.GetBSTR()) + ' ' + Utf8(V_BSTR(&key));
}

std::string DescribeObject(IUnknown* object) {
    if (object == nullptr) return "Nothing";
    const auto labelled = Query<Labelled>(object);
    return labelled ? labelled->Label() : DescribeRecord(object);
}

std::string DescribeString(BSTR text) {
    const std::string all = Utf8(text);
    if (all.size() <= longestShownText) return '"' + all + '"';
    return '"' + all.substr(0, longestShownText) + "\"... " + std::to_string(SysStringLen(text)) +
           " characters";
}

std::string DescribeNumber(double number) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%.15g", number);
    return text.data();
}

/// What a reference of any kind refers to, one step.
VARIANT Dereferenced(const VARIANT& value) {
    if (V_VT(&value) == (VT_BYREF | VT_VARIANT)) {
        return V_VARIANTREF(&value) != nullptr ? *V_VARIANTREF(&value) : VARIANT{};
    }
    VARIANT copy{};
    if (V_BYREF(&value) == nullptr) return copy;
    const VARTYPE type = V_VT(&value) & ~VT_BYREF;
    V_VT(&copy) = type;
    if ((type & VT_ARRAY) != 0) {
        V_ARRAY(&copy) = *V_ARRAYREF(&value);
        return copy;
    }
    switch (type) {
        case VT_I1:
        case VT_UI1:
            V_UI1(&copy) = *V_UI1REF(&value);
            break;
        case VT_I2:
        case VT_UI2:
        case VT_BOOL:
            V_I2(&copy) = *V_I2REF(&value);
            break;
        case VT_I8:
        case VT_UI8:
        case VT_R8:
        case VT_CY:
        case VT_DATE:
            V_I8(&copy) = *V_I8REF(&value);
            break;
        case VT_BSTR:
        case VT_DISPATCH:
        case VT_UNKNOWN:
            V_BSTR(&copy) = *V_BSTRREF(&value);
            break;
        case VT_DECIMAL:
            V_DECIMAL(&copy) = *V_DECIMALREF(&value);
            V_VT(&copy) = VT_DECIMAL;
            break;
        default:
            V_I4(&copy) = *V_I4REF(&value);
            break;
    }
    return copy;
}

std::string DescribeArray(VARTYPE type, SAFEARRAY* array) {
    if (array == nullptr) return "no array";
    std::string text = DescribeType(type);
    for (UINT dimension = 1; dimension <= SafeArrayGetDim(array); ++dimension) {
        LONG lower = 0;
        LONG upper = -1;
        SafeArrayGetLBound(array, dimension, &lower);
        SafeArrayGetUBound(array, dimension, &upper);
        text += '(' + std::to_string(lower) + " To " + std::to_string(upper) + ')';
    }
    return text;
}

}  // namespace

std::string Describe(const VARIANT& value) {
    const VARTYPE type = V_VT(&value);
    if ((type & VT_BYREF) != 0) return Describe(Dereferenced(value));
    if ((type & VT_ARRAY) != 0) return DescribeArray(type, V_ARRAY(&value));
    switch (type) {
        case VT_EMPTY:
            return "Empty";
        case VT_NULL:
            return "Null";
        case VT_BSTR:
            return DescribeString(V_BSTR(&value));
        case VT_BOOL:
            return V_BOOL(&value) == VARIANT_FALSE ? "False" : "True";
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return DescribeObject(V_UNKNOWN(&value));
        case VT_ERROR:
            if (V_ERROR(&value) == DISP_E_PARAMNOTFOUND) return "Omitted";
            return "Error " + DescribeResult(V_ERROR(&value));
        case VT_R4:
            return DescribeNumber(static_cast<double>(V_R4(&value)));
        case VT_R8:
            return DescribeNumber(V_R8(&value));
        default: {
            VARIANT text{};
            if (FAILED(VariantChangeTypeEx(&text, Source(value), LOCALE_INVARIANT, 0, VT_BSTR)))
                return DescribeType(type);
            const std::string utf8 = Utf8(V_BSTR(&text));
            VariantClear(&text);
            return utf8;
        }
    }
}

std::string DescribeExactly(const VARIANT& value) {
    const VARTYPE type = V_VT(&value);
    if (type == (VT_BYREF | VT_VARIANT) && V_VARIANTREF(&value) != nullptr)
        return "ByRef Variant " + DescribeExactly(*V_VARIANTREF(&value));
    if (type == VT_EMPTY || type == VT_NULL) return Describe(value);
    if ((type & VT_ARRAY) != 0 && (type & VT_BYREF) == 0) return Describe(value);
    return DescribeType(type) + ' ' + Describe(value);
}

std::string DescribeResult(HRESULT result) {
    for (const auto& [code, name] : resultNames)
        if (code == result) return name;
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "0x%08lX", static_cast<unsigned long>(result));
    return text.data();
}

std::string DescribeType(VARTYPE type) {
    if ((type & VT_BYREF) != 0)
        return "ByRef " + DescribeType(static_cast<VARTYPE>(type & ~VT_BYREF));
    if ((type & VT_ARRAY) != 0)
        return "Array of " + DescribeType(static_cast<VARTYPE>(type & ~VT_ARRAY));
    for (const auto& [code, name] : typeNames)
        if (code == type) return name;
    return "type " + std::to_string(type);
}

}  // namespace support
