#include "hosting/late_bound.h"

#include "hosting/class_id.h"
#include "hosting/text.h"

#include <algorithm>

namespace hosting {

LateBound::LateBound(const _variant_t& value) {
    _variant_t plain;
    Check(VariantCopyInd(&plain, const_cast<_variant_t*>(&value)), L"reading a variant");
    if (plain.vt == VT_DISPATCH)
        object_ = plain.pdispVal;
    else if (plain.vt == VT_UNKNOWN)
        object_ = Query<IDispatch>(plain.punkVal);
    else
        throw Error(DISP_E_TYPEMISMATCH, L"The value is no object.");
}

LateBound LateBound::Create(const std::wstring& progIdOrClassId) {
    const auto object = Query<IDispatch>(CreateObject(progIdOrClassId).Get());
    if (!object)
        throw Error(E_NOINTERFACE, L"\"" + progIdOrClassId + L"\" is no automation object.");
    return LateBound(object);
}

bool LateBound::Has(const wchar_t* name) const {
    auto* names = const_cast<wchar_t*>(name);
    DISPID id = DISPID_UNKNOWN;
    return object_ &&
           SUCCEEDED(object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id));
}

_variant_t LateBound::Invoke(const wchar_t* name, WORD kind,
                             std::vector<_variant_t> arguments) const {
    const Ref<IDispatch> object = object_;
    if (!object) throw Error(E_POINTER, std::wstring(L"No object to call ") + name + L" of.");
    auto* names = const_cast<wchar_t*>(name);
    DISPID id = DISPID_UNKNOWN;
    HRESULT result = object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(result))
        throw Error(result, std::wstring(L"The object has no member ") + name + L".");

    std::reverse(arguments.begin(), arguments.end());
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    if (kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) {
        parameters.rgdispidNamedArgs = &put;
        parameters.cNamedArgs = 1;
    }
    _variant_t value;
    EXCEPINFO exception{};
    UINT wrongArgument = 0;
    result = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, &value,
                            &exception, &wrongArgument);
    if (result == DISP_E_EXCEPTION) throw Error::FromException(result, exception);
    if (FAILED(result)) throw Error(result, std::wstring(name) + L": " + SystemText(result));
    return value;
}

_variant_t ByReference(_variant_t& variable) {
    VARIANT reference{};
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = &variable;
    return reference;
}

_variant_t Omitted() {
    return {static_cast<long>(DISP_E_PARAMNOTFOUND), VT_ERROR};
}

}  // namespace hosting
