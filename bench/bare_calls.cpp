#include "bare_calls.h"

namespace bench {

_variant_t Read(IDispatch& object, DISPID id, VARIANT* argument) {
    DISPPARAMS parameters = {argument, nullptr, argument != nullptr ? 1u : 0u, 0};
    _variant_t answer;
    EXCEPINFO exception = {};
    UINT badArgument = 0;
    _com_util::CheckError(object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT,
                                        DISPATCH_METHOD | DISPATCH_PROPERTYGET, &parameters,
                                        &answer, &exception, &badArgument));
    return answer;
}

_variant_t Read(IDispatch& object, const wchar_t* member, VARIANT* argument) {
    auto name = const_cast<wchar_t*>(member);
    DISPID id = DISPID_UNKNOWN;
    _com_util::CheckError(object.GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id));
    return Read(object, id, argument);
}

_variant_t ReadText(IDispatch& node, VARIANT property) {
    _variant_t text = Read(node, L"GetProperty", &property);
    if (V_VT(&text) != VT_BSTR) text.ChangeType(VT_BSTR);
    return text;
}

}  // namespace bench
