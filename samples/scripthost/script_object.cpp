#include "scripthost/script_object.h"

#include "hosting/error.h"

#include <algorithm>

namespace scripthost {

void ScriptObject::Add(const wchar_t* name, Member member) {
    members_.push_back({static_cast<DISPID>(members_.size() + 1), name, std::move(member)});
}

void ScriptObject::AddDefault(const wchar_t* name, Member member) {
    members_.push_back({DISPID_VALUE, name, std::move(member)});
}

void ScriptObject::AddEnumerator(Member member) {
    members_.push_back({DISPID_NEWENUM, L"_NewEnum", std::move(member)});
}

HRESULT ScriptObject::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT ScriptObject::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (!info) return E_POINTER;
    *info = nullptr;
    return DISP_E_BADINDEX;
}

HRESULT ScriptObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (!names || !ids || !count) return E_INVALIDARG;
    std::fill(ids, ids + count, DISPID_UNKNOWN);
    for (const auto& member : members_)
        if (CompareStringOrdinal(member.name.c_str(), -1, names[0], -1, TRUE) == CSTR_EQUAL)
            ids[0] = member.id;
    return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
}

HRESULT ScriptObject::Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                             VARIANT* result, EXCEPINFO* exception, UINT*) {
    if (!parameters) return E_INVALIDARG;
    if (!(kind & (DISPATCH_METHOD | DISPATCH_PROPERTYGET))) return DISP_E_MEMBERNOTFOUND;
    const auto member = std::find_if(members_.begin(), members_.end(),
                                     [id](const auto& each) { return each.id == id; });
    if (member == members_.end()) return DISP_E_MEMBERNOTFOUND;

    const hosting::Ref<IDispatch> self(this);
    const Member function = member->function;
    std::wstring description;
    HRESULT number = E_FAIL;
    try {
        _variant_t value = function(Arguments(*parameters));
        if (result) *result = value.Detach();
        return S_OK;
    } catch (const hosting::Error& error) {
        number = error.Number();
        description = error.Description();
    } catch (const _com_error& error) {
        number = error.Error();
        description = error.ErrorMessage();
    } catch (const std::exception&) {
        description = L"An unexpected error.";
    }
    if (!exception) return number;
    exception->scode = number;
    exception->bstrDescription = _bstr_t(description.c_str()).Detach();
    exception->bstrSource = _bstr_t(name_.c_str()).Detach();
    return DISP_E_EXCEPTION;
}

}  // namespace scripthost
