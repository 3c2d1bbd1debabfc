#include "ole/object.h"

#include <oleauto.h>

#include "ole/error.h"

namespace ole {

Object Object::From(const VARIANT& value) {
    switch (V_VT(&value)) {
        case VT_EMPTY:
            return {};
        case VT_DISPATCH:
            return Object(V_DISPATCH(&value));
        case VT_DISPATCH | VT_BYREF:
            return Object(*V_DISPATCHREF(&value));
        case VT_VARIANT | VT_BYREF:
            return From(*V_VARIANTREF(&value));
        case VT_UNKNOWN:
            if (V_UNKNOWN(&value) == nullptr) return {};
            if (auto object = Query<IDispatch>(V_UNKNOWN(&value))) return Object(std::move(object));
            [[fallthrough]];
        default:
            Throw(Number::objectRequired);
    }
}

void Object::Put(const wchar_t* member, const Argument& value) const {
    VARIANT argument = value.Value();
    InvokeId(IdOf(member), DISPATCH_PROPERTYPUT, &argument, 1);
}

void Object::PutRef(const wchar_t* member, const Object& value) const {
    VARIANT argument = Argument(value).Value();
    const DISPID id = IdOf(member);
    _variant_t answer;
    ExceptionInfo exception;
    const HRESULT result = TryInvoke(id, DISPATCH_PROPERTYPUTREF, &argument, 1, answer, exception);
    if (result == DISP_E_MEMBERNOTFOUND) {
        InvokeId(id, DISPATCH_PROPERTYPUT, &argument, 1);
    } else if (FAILED(result)) {
        ThrowLateBound(result, exception);
    }
}

DISPID Object::IdOf(const wchar_t* member) const {
    if (!object_) Throw(Number::objectNotSet);
    DISPID id = DISPID_UNKNOWN;
    auto name = const_cast<wchar_t*>(member);
    const HRESULT result = object_->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(result)) {
        ExceptionInfo none;
        ThrowLateBound(result, none);
    }
    return id;
}

_variant_t Object::InvokeId(DISPID id, WORD flags, VARIANT* reversed, std::size_t count) const {
    _variant_t answer;
    ExceptionInfo exception;
    const HRESULT result = TryInvoke(id, flags, reversed, count, answer, exception);
    if (FAILED(result)) ThrowLateBound(result, exception);
    return answer;
}

HRESULT Object::TryInvoke(DISPID id, WORD flags, VARIANT* reversed, std::size_t count,
                          _variant_t& answer, EXCEPINFO& exception) const {
    if (!object_) Throw(Number::objectNotSet);
    const Ref<IDispatch> kept = object_;
    const bool assigns = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    DISPID assigned = DISPID_PROPERTYPUT;
    DISPPARAMS parameters = {reversed, assigns ? &assigned : nullptr, static_cast<UINT>(count),
                             assigns ? 1u : 0u};
    UINT badArgument = 0;
    return kept->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                        assigns ? nullptr : &answer, &exception, &badArgument);
}

Enumeration::Enumeration(const Object& collection) {
    const _variant_t answer =
        collection.InvokeId(DISPID_NEWENUM, DISPATCH_METHOD | DISPATCH_PROPERTYGET, nullptr, 0);
    if (V_VT(&answer) == VT_UNKNOWN || V_VT(&answer) == VT_DISPATCH) {
        elements_ = Query<IEnumVARIANT>(V_UNKNOWN(&answer));
    }
    if (!elements_) Throw(Number::noSuchMember);
}

Enumeration::~Enumeration() {
    for (; used_ < fetched_; ++used_) VariantClear(&block_[used_]);
}

bool Enumeration::Next(_variant_t& element) {
    element.Clear();
    if (used_ == fetched_) {
        if (ended_) return false;
        Fetch();
        if (used_ == fetched_) return false;
    }
    element.Attach(block_[used_++]);
    return true;
}

void Enumeration::Fetch() {
    used_ = 0;
    fetched_ = 0;
    ULONG count = 0;
    const HRESULT result = elements_->Next(blockSize, block_.data(), &count);
    if (count > blockSize) count = 0;
    fetched_ = count;
    // Some enumerators answer S_OK for a short block; an empty block ends every one.
    ended_ = result == S_FALSE || count == 0;
    if (FAILED(result)) {
        for (VARIANT& element : block_) VariantClear(&element);
        fetched_ = 0;
        ExceptionInfo none;
        ThrowLateBound(result, none);
    }
}

}  // namespace ole
