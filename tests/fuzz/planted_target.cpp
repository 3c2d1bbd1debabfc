#include "fuzz/planted_target.h"

#include <cstdint>
#include <utility>

namespace fuzz {

using support::Ref;

namespace {

/// An interface with the methods Take(value) and Fine(number).
Ref<ITypeInfo> Describe() {
    static wchar_t take[] = L"Take";
    static wchar_t fine[] = L"Fine";
    static wchar_t value[] = L"value";
    static wchar_t number[] = L"number";
    static PARAMDATA takeParameters[] = {{value, VT_VARIANT}};
    static PARAMDATA fineParameters[] = {{number, VT_I4}};
    static METHODDATA methods[] = {
        {take, takeParameters, 1, 0, CC_STDCALL, 1, DISPATCH_METHOD, VT_HRESULT},
        {fine, fineParameters, 2, 1, CC_STDCALL, 1, DISPATCH_METHOD, VT_HRESULT}};
    static INTERFACEDATA members = {methods, 2};
    Ref<ITypeInfo> made;
    Ref<ITypeInfo> described;
    HREFTYPE reference = 0;
    CreateDispTypeInfo(&members, LOCALE_SYSTEM_DEFAULT, made.GetAddressOf());
    // What is made is a class with the interface; the methods are in the interface.
    if (made && SUCCEEDED(made->GetRefTypeOfImplType(0, &reference)) &&
        SUCCEEDED(made->GetRefTypeInfo(reference, described.GetAddressOf())))
        return described;
    return made;
}

class Faulty final : public IDispatch {
public:
    explicit Faulty(std::string fault) : fault_(std::move(fault)), description_(Describe()) {}

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (object == nullptr) return E_POINTER;
        const bool mine = iid == __uuidof(IUnknown) || iid == __uuidof(IDispatch);
        *object = mine ? this : nullptr;
        if (!mine) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override {
        return static_cast<ULONG>(InterlockedIncrement(&references_));
    }
    STDMETHODIMP_(ULONG) Release() override {
        const LONG left = InterlockedDecrement(&references_);
        if (left == 0) delete this;
        return static_cast<ULONG>(left);
    }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        if (count == nullptr) return E_POINTER;
        *count = 1;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
        if (info == nullptr) return E_POINTER;
        *info = nullptr;
        return index == 0 ? description_.CopyTo(info) : DISP_E_BADINDEX;
    }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO*, UINT*) override {
        if (result != nullptr) VariantInit(result);
        if (parameters == nullptr) return E_INVALIDARG;
        if (id == 1 && parameters->cArgs == 1) Take(parameters->rgvarg[0]);
        return S_OK;
    }

private:
    ~Faulty() = default;

    /// Does what it should not for every object that it is given by value.
    void Take(const VARIANT& value) {
        if (V_VT(&value) != VT_DISPATCH || V_DISPATCH(&value) == nullptr) return;
        IDispatch* const object = V_DISPATCH(&value);
        if (fault_ == "crash") *static_cast<volatile int*>(nowhere_) = 1;
        if (fault_ == "trap") __builtin_trap();
        while (fault_ == "hang") Sleep(10);
        if (fault_ == "leak") object->AddRef();
        // Until nobody can have a reference any more.
        while (fault_ == "overrelease" && object->Release() != 0) {
        }
    }

    std::string fault_;
    Ref<ITypeInfo> description_;
    // Not null, which debug builds check for before the system does.
    void* volatile nowhere_ = reinterpret_cast<void*>(std::uintptr_t{16});
    LONG references_ = 1;
};

}  // namespace

Ref<IDispatch> MakePlantedTarget(const std::string& fault) {
    return support::Make<Faulty>(fault);
}

}  // namespace fuzz
