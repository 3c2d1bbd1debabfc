#include "ole/dispatch.h"

#include <oleauto.h>

#include <algorithm>
#include <array>
#include <optional>

#include "ole/argument_slot.h"
#include "ole/class_info.h"

namespace ole {

namespace {

constexpr UINT mostParameters = 16;

/// The caller's arguments of one call, in the order of the member's parameters.
class Arguments {
public:
    /// Throws BadArgument for too many arguments, and for names that are not the member's or come
    /// twice; `badArgument` then says which.
    Arguments(const Member& member, const DISPPARAMS& given, UINT& badArgument) : given_(given) {
        if (given.cArgs > member.given) throw BadArgument{DISP_E_BADPARAMCOUNT};
        const UINT positional = given.cArgs - given.cNamedArgs;
        for (UINT i = 0; i < positional; ++i) ordered_[i] = &given.rgvarg[given.cArgs - 1 - i];
        for (UINT i = 0; i < given.cNamedArgs; ++i) {
            DISPID position = given.rgdispidNamedArgs[i];
            if (position == DISPID_PROPERTYPUT) position = static_cast<DISPID>(member.given) - 1;
            badArgument = i;
            if (position < 0 || position >= static_cast<DISPID>(member.given) ||
                ordered_[static_cast<UINT>(position)] != nullptr) {
                throw BadArgument{DISP_E_PARAMNOTFOUND};
            }
            ordered_[static_cast<UINT>(position)] = &given.rgvarg[i];
        }
    }

    VARIANT* operator[](UINT parameter) const { return ordered_[parameter]; }

    /// Where the caller's argument for a parameter stands in the caller's own array.
    UINT IndexOf(UINT parameter) const {
        const VARIANT* argument = ordered_[parameter];
        return argument == nullptr ? 0 : static_cast<UINT>(argument - given_.rgvarg);
    }

private:
    const DISPPARAMS& given_;
    std::array<VARIANT*, mostParameters> ordered_ = {};
};

/// What a call leaves beside its result.
struct Report {
    EXCEPINFO* exception;
    UINT* badArgument;

    HRESULT Failed(HRESULT result) const {
        ExceptionInfo ignored;
        TakeErrorInfo(result, exception != nullptr ? *exception : ignored);
        return DISP_E_EXCEPTION;
    }
};

/// Calls the member; `badArgument` is the caller's index of the argument that a BadArgument is
/// about.
HRESULT Run(const Member& member, IUnknown* object, const DISPPARAMS& given, VARIANT* result,
            const Report& report, UINT& badArgument) {
    const auto count = static_cast<UINT>(member.parameters.size());
    if (count > mostParameters) return DISP_E_BADPARAMCOUNT;
    std::array<std::optional<ArgumentSlot>, mostParameters> slots;
    std::array<VARIANT, mostParameters> passed;
    std::array<VARIANT*, mostParameters> passedAt;
    std::array<VARTYPE, mostParameters> types;

    const Arguments arguments(member, given, badArgument);
    for (UINT i = 0; i < count; ++i) {
        const Parameter& parameter = member.parameters[i];
        badArgument = arguments.IndexOf(i);
        passed[i] = slots[i].emplace(parameter, arguments[i]).ForCallee();
        passedAt[i] = &passed[i];
        types[i] = parameter.byReference ? V_VT(&passed[i]) : parameter.type;
    }

    SetErrorInfo(0, nullptr);
    VARIANT answer = {};
    Check(DispCallFunc(object, member.tableOffset, CC_STDCALL, VT_ERROR, count, types.data(),
                       passedAt.data(), &answer));
    if (FAILED(V_ERROR(&answer))) return report.Failed(V_ERROR(&answer));
    for (UINT i = 0; i < member.given; ++i) {
        badArgument = arguments.IndexOf(i);
        slots[i]->CopyBack();
    }
    if (result != nullptr && member.HasResult()) slots[member.given]->MoveTo(*result);
    return S_OK;
}

/// `object.Property(arguments)` where the property takes none means the default member of its
/// value.
bool IsForValue(const Member& member, const DISPPARAMS& given) {
    if (member.kind != INVOKE_PROPERTYGET || member.given != 0 || given.cArgs == 0) return false;
    const VARTYPE type = member.parameters[0].type;
    return type == VT_DISPATCH || type == VT_VARIANT;
}

HRESULT RunOnValue(const Member& member, IUnknown* object, DISPPARAMS& given, VARIANT* result,
                   const Report& report, UINT& badArgument) {
    _variant_t value;
    const HRESULT read = Run(member, object, {}, &value, report, badArgument);
    if (FAILED(read)) return read;
    if (V_VT(&value) != VT_DISPATCH || V_DISPATCH(&value) == nullptr) return DISP_E_BADPARAMCOUNT;
    return V_DISPATCH(&value)->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT,
                                      DISPATCH_METHOD | DISPATCH_PROPERTYGET, &given, result,
                                      report.exception, report.badArgument);
}

bool IsWellFormed(const DISPPARAMS* parameters) {
    return parameters != nullptr && parameters->cArgs >= parameters->cNamedArgs &&
           (parameters->cArgs == 0 || parameters->rgvarg != nullptr) &&
           (parameters->cNamedArgs == 0 || parameters->rgdispidNamedArgs != nullptr);
}

}  // namespace

HRESULT InvokeMember(const DispatchClass& type, IUnknown* object, DISPID id, WORD flags,
                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                     UINT* badArgument) noexcept {
    if (!IsWellFormed(parameters)) return E_INVALIDARG;
    if (result != nullptr) VariantInit(result);
    const Ref<IUnknown> kept = object;
    const Report report = {exception, badArgument};
    UINT bad = 0;
    try {
        const Member* member = type.members().Find(id, flags);
        if (member == nullptr) return DISP_E_MEMBERNOTFOUND;
        if (IsForValue(*member, *parameters)) {
            return RunOnValue(*member, object, *parameters, result, report, bad);
        }
        return Run(*member, object, *parameters, result, report, bad);
    } catch (const BadArgument& failure) {
        if (badArgument != nullptr) *badArgument = bad;
        return failure.result;
    } catch (...) {
        return report.Failed(ReportClassError(type.id, type.interfaceId));
    }
}

HRESULT FindNames(const DispatchClass& type, LPOLESTR* names, UINT count, DISPID* ids) noexcept {
    if (count == 0) return S_OK;
    if (names == nullptr || ids == nullptr) return E_POINTER;
    std::fill_n(ids, count, DISPID_UNKNOWN);
    const HRESULT result = Guard({}, IID_IDispatch, [&] {
        const TypeTable& members = type.members();
        ids[0] = members.IdOf(names[0]);
        for (UINT i = 1; i < count; ++i) ids[i] = members.PositionOf(ids[0], names[i]);
    });
    if (FAILED(result)) return result;
    return std::find(ids, ids + count, DISPID_UNKNOWN) == ids + count ? S_OK : DISP_E_UNKNOWNNAME;
}

}  // namespace ole
