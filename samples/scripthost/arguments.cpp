#include "scripthost/arguments.h"

#include "hosting/error.h"

namespace scripthost {

namespace {

_variant_t ConvertTo(VARTYPE type, const VARIANT& value) {
    _variant_t result;
    const HRESULT code = VariantChangeType(&result, const_cast<VARIANT*>(&value), 0, type);
    if (FAILED(code)) throw hosting::Error(code, L"The argument has the wrong type.");
    return result;
}

}  // namespace

bool Arguments::Has(std::size_t index) const {
    if (index >= Count()) return false;
    const VARIANT& value = parameters_.rgvarg[Count() - 1 - index];
    return !(value.vt == VT_ERROR && value.scode == DISP_E_PARAMNOTFOUND);
}

const VARIANT& Arguments::operator[](std::size_t index) const {
    if (!Has(index))
        throw hosting::Error(DISP_E_PARAMNOTOPTIONAL,
                             L"Argument " + std::to_wstring(index + 1) + L" is missing.");
    return parameters_.rgvarg[Count() - 1 - index];
}

std::wstring Arguments::Text(std::size_t index) const {
    return InWords((*this)[index]);
}

long Arguments::Number(std::size_t index) const {
    return ConvertTo(VT_I4, (*this)[index]).lVal;
}

hosting::Ref<IUnknown> Arguments::Object(std::size_t index) const {
    const _variant_t value = ConvertTo(VT_UNKNOWN, (*this)[index]);
    if (!value.punkVal) throw hosting::Error(E_INVALIDARG, L"An object is needed.");
    return value.punkVal;
}

std::wstring Arguments::Text(std::size_t index, const std::wstring& otherwise) const {
    return Has(index) ? Text(index) : otherwise;
}

long Arguments::Number(std::size_t index, long otherwise) const {
    return Has(index) ? Number(index) : otherwise;
}

std::wstring InWords(const VARIANT& value) {
    _variant_t plain;
    hosting::Check(VariantCopyInd(&plain, const_cast<VARIANT*>(&value)), L"reading an argument");
    if (plain.vt == VT_NULL) return L"null";
    const _variant_t text = ConvertTo(VT_BSTR, plain);
    return {text.bstrVal ? text.bstrVal : L"", SysStringLen(text.bstrVal)};
}

std::wstring Joined(const Arguments& arguments) {
    std::wstring text;
    for (std::size_t i = 0; i < arguments.Count(); ++i)
        text += (i ? L" " : L"") + arguments.Text(i, L"");
    return text;
}

}  // namespace scripthost
