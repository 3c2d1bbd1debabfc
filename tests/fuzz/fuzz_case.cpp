#include "fuzz/fuzz_case.h"

#include <algorithm>
#include <cstring>
#include <random>

namespace fuzz {

using support::Value;

namespace {

constexpr Form allForms[] = {Form::value, Form::reference, Form::variable, Form::variableToThat};

WORD UsualKind(const Member& member) {
    return member.IsPut() ? member.kind : WORD{DISPATCH_METHOD | DISPATCH_PROPERTYGET};
}

Case Suitable(const Member& member, const std::vector<NamedValue>& lattice) {
    Case made;
    made.member = &member;
    made.kind = UsualKind(member);
    for (const Parameter& parameter : member.parameters)
        made.arguments.push_back({SuitableIndex(lattice, parameter.type), Form::value});
    if (member.IsPut()) made.named = {DISPID_PROPERTYPUT};
    return made;
}

void AddNamed(std::vector<Case>& cases, const Case& usual) {
    const std::size_t count = usual.arguments.size();
    if (count == 0 || usual.member->IsPut()) return;
    Case named = usual;
    for (std::size_t index = 0; index < count; ++index)
        named.named.push_back(static_cast<DISPID>(index));
    cases.push_back(named);
    std::reverse(named.named.begin(), named.named.end());
    cases.push_back(named);
    for (const DISPID wrong :
         {DISPID{0}, DISPID{99}, DISPID{DISPID_UNKNOWN}, DISPID{DISPID_PROPERTYPUT}}) {
        std::fill(named.named.begin(), named.named.end(), wrong);
        cases.push_back(named);
        Case last = usual;
        last.named = {wrong};
        cases.push_back(last);
    }
}

/// Owns what an argument refers to, for the length of a call.
struct Place {
    Value inner;
    VARIANT middle{};
    VARIANT slot{};
};

void Fill(Place& place, const Value& value, Form form) {
    place.inner = value;
    const VARTYPE type = V_VT(&place.inner);
    const bool refers = type != VT_EMPTY && type != VT_NULL;
    VARIANT reference = place.inner;
    if (refers) {
        // Every member of the union begins at the same address, but a DECIMAL at the type itself.
        V_BYREF(&reference) = type == VT_DECIMAL ? static_cast<void*>(&V_DECIMAL(&place.inner))
                                                 : static_cast<void*>(&V_I4(&place.inner));
        V_VT(&reference) = static_cast<VARTYPE>(VT_BYREF | type);
    }
    const auto variantReference = [](VARIANT& target) {
        VARIANT made{};
        V_VT(&made) = VT_BYREF | VT_VARIANT;
        V_VARIANTREF(&made) = &target;
        return made;
    };
    switch (form) {
        case Form::value:
            place.slot = place.inner;
            break;
        case Form::reference:
            place.slot = reference;
            break;
        case Form::variable:
            place.slot = variantReference(place.inner);
            break;
        case Form::variableToThat:
            place.middle = reference;
            place.slot = variantReference(place.middle);
            break;
    }
}

}  // namespace

std::string Case::Text(const std::vector<NamedValue>& lattice) const {
    constexpr const char* forms[] = {"", "ByRef ", "variable ", "variable ByRef "};
    std::string text = member->Title() + '(';
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        if (index > 0) text += ", ";
        if (index + named.size() >= arguments.size() && !member->IsPut())
            text += "id " + std::to_string(named[index + named.size() - arguments.size()]) + ": ";
        text += forms[static_cast<std::size_t>(arguments[index].form)];
        text += '<' + lattice[arguments[index].value].name + '>';
    }
    text += ") kind " + std::to_string(kind);
    if (!wantsResult) text += " without result";
    if (!wantsException) text += " without exception";
    if (!wantsBadArgument) text += " without bad argument";
    if (wrongInterface) text += " of a wrong interface";
    return text;
}

std::vector<Case> SystematicCases(const Member& member, const std::vector<NamedValue>& lattice) {
    std::vector<Case> cases;
    const Case usual = Suitable(member, lattice);
    const std::size_t count = usual.arguments.size();
    cases.push_back(usual);
    for (std::size_t place = 0; place < count; ++place) {
        for (std::size_t value = 0; value < lattice.size(); ++value) {
            for (const Form form : allForms) {
                Case one = usual;
                one.arguments[place] = {value, form};
                cases.push_back(std::move(one));
            }
        }
    }
    for (std::size_t value = 0; value < lattice.size() && count > 1; ++value) {
        Case all = usual;
        for (Case::Passed& passed : all.arguments) passed.value = value;
        cases.push_back(std::move(all));
    }
    for (std::size_t given = 0; given <= count + 3; ++given) {
        Case counted = usual;
        counted.arguments.resize(given);
        if (given == 0) counted.named.clear();
        cases.push_back(std::move(counted));
    }
    for (const int kind :
         {DISPATCH_METHOD, DISPATCH_PROPERTYGET, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
          DISPATCH_PROPERTYPUT, DISPATCH_PROPERTYPUTREF,
          DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF, 0, 15, 0xFFF0}) {
        Case other = usual;
        other.kind = static_cast<WORD>(kind);
        cases.push_back(other);
        other.named.clear();
        cases.push_back(other);
        if (count == 0) continue;
        other.named = {DISPID_PROPERTYPUT};
        cases.push_back(std::move(other));
    }
    AddNamed(cases, usual);
    for (int missing = 0; missing < 8; ++missing) {
        Case pointers = usual;
        pointers.wantsResult = (missing & 1) != 0;
        pointers.wantsException = (missing & 2) != 0;
        pointers.wantsBadArgument = (missing & 4) != 0;
        cases.push_back(pointers);
        // The same with an argument that has to be refused.
        for (Case::Passed& passed : pointers.arguments) passed.value = 1;
        cases.push_back(std::move(pointers));
    }
    Case foreign = usual;
    foreign.wrongInterface = true;
    cases.push_back(std::move(foreign));
    return cases;
}

std::vector<Case> RandomCases(const std::vector<Member>& members,
                              const std::vector<NamedValue>& lattice, std::size_t count,
                              unsigned seed) {
    std::mt19937 random(seed);
    const auto below = [&random](std::size_t end) { return random() % end; };
    std::vector<Case> cases;
    while (cases.size() < count && !members.empty()) {
        Case made = Suitable(members[below(members.size())], lattice);
        for (Case::Passed& passed : made.arguments) {
            if (below(3) == 0) continue;
            passed = {below(lattice.size()), allForms[below(std::size(allForms))]};
        }
        cases.push_back(std::move(made));
    }
    return cases;
}

HRESULT Run(const Case& which, IDispatch& object, const std::vector<NamedValue>& lattice) {
    const std::size_t count = which.arguments.size();
    std::vector<Place> places(count);
    std::vector<VARIANT> slots(count);
    for (std::size_t index = 0; index < count; ++index) {
        Place& place = places[index];
        Fill(place, lattice[which.arguments[index].value].value, which.arguments[index].form);
        slots[count - 1 - index] = place.slot;
    }
    std::vector<DISPID> named(which.named.rbegin(), which.named.rend());
    DISPPARAMS parameters = {slots.empty() ? nullptr : slots.data(),
                             named.empty() ? nullptr : named.data(), static_cast<UINT>(count),
                             static_cast<UINT>(std::min(named.size(), count))};
    // Hosts do not clear the place for the result.
    VARIANT result;
    std::memset(&result, 0xCC, sizeof result);
    EXCEPINFO exception{};
    UINT badArgument = 0;
    const HRESULT outcome = object.Invoke(
        which.member->id, which.wrongInterface ? IID_IDispatch : IID_NULL, LOCALE_USER_DEFAULT,
        which.kind, &parameters, which.wantsResult ? &result : nullptr,
        which.wantsException ? &exception : nullptr,
        which.wantsBadArgument ? &badArgument : nullptr);
    if (SUCCEEDED(outcome) && which.wantsResult) VariantClear(&result);
    if (exception.pfnDeferredFillIn != nullptr) exception.pfnDeferredFillIn(&exception);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrHelpFile);
    return outcome;
}

void TryPlumbing(IDispatch& object) {
    std::wstring longName(10000, L'x');
    wchar_t empty[] = L"";
    for (LPOLESTR name : {empty, longName.data()}) {
        LPOLESTR names[] = {name, name};
        DISPID ids[2] = {};
        object.GetIDsOfNames(IID_NULL, names, 1, 0, ids);
        object.GetIDsOfNames(IID_NULL, names, 2, 0, ids);
        object.GetIDsOfNames(IID_IDispatch, names, 1, 0, ids);
        object.GetIDsOfNames(IID_NULL, names, 0, 0, ids);
    }
    for (const UINT index : {0u, 1u, 0xFFFFFFFFu}) {
        support::Ref<ITypeInfo> info;
        object.GetTypeInfo(index, 0, info.GetAddressOf());
    }
    object.GetTypeInfo(0, 0, nullptr);
    object.GetTypeInfoCount(nullptr);
    for (const DISPID id : {DISPID{0}, DISPID{-1}, DISPID{-3}, DISPID{-4}, DISPID{-5},
                            DISPID{99999}, DISPID{0x7FFFFFFF}, DISPID{0x60020003}, -0x7FFFFFFFL}) {
        DISPPARAMS none{};
        VARIANT result;
        VariantInit(&result);
        object.Invoke(id, IID_NULL, 0, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &none, &result,
                      nullptr, nullptr);
        VariantClear(&result);
    }
    object.Invoke(1, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr);
}

}  // namespace fuzz
