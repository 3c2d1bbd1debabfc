#include "ole/object.h"

#include <oleauto.h>

#include "ole/error.h"
#include "ole/variant_memory.h"

namespace ole {

namespace {

DISPID IdOf(IDispatch& object, const wchar_t* member) {
    DISPID id = DISPID_UNKNOWN;
    auto name = const_cast<wchar_t*>(member);
    Check(object.GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id));
    return id;
}

_variant_t Read(IDispatch& object, DISPID id, VARIANT* reversed, std::size_t count) {
    DISPPARAMS parameters = {reversed, nullptr, static_cast<UINT>(count), 0};
    _variant_t answer;
    ExceptionInfo exception;
    UINT badArgument = 0;
    const HRESULT result =
        object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                      &parameters, &answer, &exception, &badArgument);
    if (FAILED(result)) ThrowLateBound(result, exception);
    return answer;
}

HRESULT Write(IDispatch& object, DISPID id, WORD flags, VARIANT& value, EXCEPINFO& exception) {
    DISPID assigned = DISPID_PROPERTYPUT;
    DISPPARAMS parameters = {&value, &assigned, 1, 1};
    UINT badArgument = 0;
    return object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, nullptr, &exception,
                         &badArgument);
}

}  // namespace

Object Object::From(const VARIANT& value) {
    switch (V_VT(&value)) {
        case VT_EMPTY:
            return {};
        case VT_DISPATCH:
            return Object(V_DISPATCH(&value));
        case VT_UNKNOWN:
            if (V_UNKNOWN(&value) == nullptr) return {};
            if (auto object = Query<IDispatch>(V_UNKNOWN(&value))) return Object(std::move(object));
            break;
        default:
            if (!V_ISBYREF(&value)) break;
            if (const auto borrowed = Borrowed(value)) return From(*borrowed);
    }
    Throw(Number::objectRequired);
}

Ref<IDispatch> Object::Held() const {
    if (!object_) Throw(Number::objectNotSet);
    return object_;
}

_variant_t Object::Invoke(const wchar_t* member, VARIANT* reversed, std::size_t count) const {
    const Ref<IDispatch> held = Held();
    return Read(*held.Get(), IdOf(*held.Get(), member), reversed, count);
}

_variant_t Object::InvokeId(DISPID id, VARIANT* reversed, std::size_t count) const {
    return Read(*Held().Get(), id, reversed, count);
}

_variant_t RepeatedCall::Invoke(VARIANT* reversed, std::size_t count) {
    const Ref<IDispatch> object = object_.Held();
    if (!id_) id_ = IdOf(*object.Get(), name_);
    return Read(*object.Get(), *id_, reversed, count);
}

void Object::Assign(const wchar_t* member, VARIANT value, WORD flags) const {
    const Ref<IDispatch> held = Held();
    const DISPID id = IdOf(*held.Get(), member);
    ExceptionInfo exception;
    HRESULT result = Write(*held.Get(), id, flags, value, exception);
    if (result == DISP_E_MEMBERNOTFOUND && V_VT(&value) == VT_DISPATCH) {
        const WORD other = flags ^ (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF);
        result = Write(*held.Get(), id, other, value, exception);
    }
    if (FAILED(result)) ThrowLateBound(result, exception);
}

Enumeration::Enumeration(const Object& collection) {
    const _variant_t answer = collection.InvokeId(DISPID_NEWENUM, nullptr, 0);
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
    // An enumerator that fails, or says of more elements than it was asked for, gave none.
    if (FAILED(result) || count > blockSize) count = 0;
    for (ULONG i = count; i < blockSize; ++i) VariantClear(&block_[i]);
    Check(result, *elements_.Get(), IID_IEnumVARIANT);
    fetched_ = count;
    // Some enumerators answer S_OK for a short block; an empty block ends every one.
    ended_ = result == S_FALSE || count == 0;
}

}  // namespace ole
