#include "ole/dispatch.h"

#include <oleauto.h>

#include <array>
#include <optional>

#include "ole/argument_slot.h"
#include "ole/error.h"

namespace ole {

namespace {

constexpr UINT mostParameters = 16;

/// The arguments of one call in the order of the member's parameters.
class Arguments {
public:
    Arguments(const Member& member, const DISPPARAMS& given) : member_(member), given_(given) {
        const UINT positional = given.cArgs - given.cNamedArgs;
        if (positional > member.given) throw BadArgument{DISP_E_BADPARAMCOUNT};
        for (UINT i = 0; i < positional; ++i) ordered_[i] = &given.rgvarg[given.cArgs - 1 - i];
        for (UINT i = 0; i < given.cNamedArgs; ++i) ordered_[Position(i)] = &given.rgvarg[i];
    }

    VARIANT* operator[](UINT parameter) const { return ordered_[parameter]; }

    /// Where the caller's argument for a parameter stands in the caller's own array.
    UINT IndexOf(UINT parameter) const {
        const VARIANT* argument = ordered_[parameter];
        return argument == nullptr ? 0 : static_cast<UINT>(argument - given_.rgvarg);
    }

private:
    UINT Position(UINT named) const {
        const DISPID id = given_.rgdispidNamedArgs[named];
        if (id == DISPID_PROPERTYPUT && member_.given > 0) return member_.given - 1;
        if (id < 0 || static_cast<UINT>(id) >= member_.given)
            throw BadArgument{DISP_E_PARAMNOTFOUND};
        return static_cast<UINT>(id);
    }

    const Member& member_;
    const DISPPARAMS& given_;
    std::array<VARIANT*, mostParameters> ordered_ = {};
};

HRESULT Run(const Member& member, IUnknown* object, DISPPARAMS& given, VARIANT* result,
            EXCEPINFO* exception, UINT* badArgument) {
    const auto count = static_cast<UINT>(member.parameters.size());
    if (count > mostParameters) return DISP_E_BADPARAMCOUNT;
    std::array<std::optional<ArgumentSlot>, mostParameters> slots;
    std::array<VARIANT, mostParameters> passed;
    std::array<VARIANT*, mostParameters> passedAt;
    std::array<VARTYPE, mostParameters> types;

    const Arguments arguments(member, given);
    UINT current = 0;
    try {
        for (; current < count; ++current) {
            slots[current].emplace(member.parameters[current], arguments[current]);
            passed[current] = slots[current]->ForCallee();
            passedAt[current] = &passed[current];
            types[current] = member.parameters[current].byReference
                                 ? V_VT(&passed[current])
                                 : member.parameters[current].type;
        }
    } catch (const BadArgument&) {
        if (badArgument != nullptr) *badArgument = arguments.IndexOf(current);
        throw;
    }

    SetErrorInfo(0, nullptr);
    VARIANT answer = {};
    Check(DispCallFunc(object, member.tableOffset, CC_STDCALL, VT_ERROR, count, types.data(),
                       passedAt.data(), &answer));
    if (FAILED(V_ERROR(&answer))) {
        ExceptionInfo ignored;
        TakeErrorInfo(V_ERROR(&answer), exception != nullptr ? *exception : ignored);
        return DISP_E_EXCEPTION;
    }
    for (UINT i = 0; i < member.given; ++i) slots[i]->CopyBack();
    if (result != nullptr) {
        VariantInit(result);
        if (member.HasResult()) slots[member.given]->MoveTo(*result);
    }
    return S_OK;
}

/// `object.Property(arguments)` where the property takes none means the default member of its
/// value.
bool IsForValue(const Member& member, const DISPPARAMS& given) {
    return member.kind == INVOKE_PROPERTYGET && member.given == 0 && given.cArgs > 0 &&
           member.HasResult() && member.parameters[0].type == VT_DISPATCH;
}

HRESULT RunOnValue(const Member& member, IUnknown* object, WORD flags, DISPPARAMS& given,
                   VARIANT* result, EXCEPINFO* exception, UINT* badArgument) {
    DISPPARAMS none = {};
    _variant_t value;
    const HRESULT read = Run(member, object, none, &value, exception, badArgument);
    if (FAILED(read)) return read;
    if (V_VT(&value) != VT_DISPATCH || V_DISPATCH(&value) == nullptr) return DISP_E_BADPARAMCOUNT;
    return V_DISPATCH(&value)->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, flags, &given,
                                      result, exception, badArgument);
}

}  // namespace

HRESULT InvokeMember(const TypeTable& table, IUnknown* object, DISPID id, WORD flags,
                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                     UINT* badArgument) noexcept {
    if (parameters == nullptr || parameters->cArgs < parameters->cNamedArgs) return E_INVALIDARG;
    const Member* member = table.Find(id, flags);
    if (member == nullptr) return DISP_E_MEMBERNOTFOUND;
    const Ref<IUnknown> kept = object;
    try {
        if (IsForValue(*member, *parameters)) {
            return RunOnValue(*member, object, flags, *parameters, result, exception, badArgument);
        }
        return Run(*member, object, *parameters, result, exception, badArgument);
    } catch (const BadArgument& bad) {
        return bad.result;
    } catch (...) {
        const HRESULT failure = ReportCurrentException({}, IID_IDispatch);
        ExceptionInfo ignored;
        TakeErrorInfo(failure, exception != nullptr ? *exception : ignored);
        return DISP_E_EXCEPTION;
    }
}

HRESULT FindNames(const TypeTable& table, LPOLESTR* names, UINT count, DISPID* ids) noexcept {
    if (names == nullptr || ids == nullptr) return E_POINTER;
    return table.Info().GetIDsOfNames(names, count, ids);
}

}  // namespace ole
