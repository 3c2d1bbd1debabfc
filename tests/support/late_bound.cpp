#include "support/late_bound.h"

#include <algorithm>
#include <array>
#include <ostream>

namespace support {

namespace {

constexpr UINT untouched = 0xABCDu;

/// Owns the strings of what a failed call left.
class Exception : public EXCEPINFO {
public:
    Exception() : EXCEPINFO{} {}
    ~Exception() {
        SysFreeString(bstrSource);
        SysFreeString(bstrDescription);
        SysFreeString(bstrHelpFile);
    }
    Exception(const Exception&) = delete;
    Exception& operator=(const Exception&) = delete;
};

void TakeException(Exception& exception, Outcome& outcome) {
    if (exception.pfnDeferredFillIn != nullptr) {
        outcome.wasDeferred = true;
        exception.pfnDeferredFillIn(&exception);
    }
    outcome.description = Utf8(exception.bstrDescription);
    outcome.source = Utf8(exception.bstrSource);
    if (exception.wCode != 0)
        outcome.number = static_cast<HRESULT>(0x800A0000u + exception.wCode);
    else if (exception.scode != 0)
        outcome.number = exception.scode;
}

}  // namespace

Outcome::operator testing::AssertionResult() const {
    if (Ok()) return testing::AssertionSuccess() << Text();
    return testing::AssertionFailure() << Text();
}

std::string Outcome::Text() const {
    if (Ok()) return value.Type() == VT_EMPTY ? "OK" : "OK " + Describe(value);
    std::string text = DescribeResult(number);
    if (!description.empty()) text += ' ' + description;
    if (!source.empty()) text += " [" + source + ']';
    return text;
}

int Outcome::AutomationNumber() const {
    if (Ok()) return 0;
    const auto bits = static_cast<unsigned long>(number);
    return (bits & 0xFFFF0000) == 0x800A0000 ? static_cast<int>(bits & 0xFFFF) : -1;
}

std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
    return out << outcome.Text();
}

Argument Variable(Value& variable) {
    return Reference(VT_VARIANT, &variable);
}

Argument Reference(VARTYPE type, void* place) {
    Argument argument{Value()};
    V_VT(&argument.value_) = static_cast<VARTYPE>(VT_BYREF | type);
    V_BYREF(&argument.value_) = place;
    return argument;
}

Argument Named(std::string name, Argument argument) {
    argument.name_ = std::move(name);
    return argument;
}

bool LateBound::Has(std::string_view member) const {
    return Id(member) != DISPID_UNKNOWN;
}

DISPID LateBound::Id(std::string_view member) const {
    std::wstring name = Wide(member);
    LPOLESTR names = name.data();
    DISPID id = DISPID_UNKNOWN;
    if (!object_) return id;
    if (FAILED(object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id)))
        return DISPID_UNKNOWN;
    return id;
}

Outcome LateBound::Set(WORD kind, std::string_view member,
                       const std::vector<Argument>& arguments) const {
    CallStyle style;
    style.kind = kind;
    style.wantsResult = false;
    return Invoke(member, style, arguments);
}

Outcome LateBound::Invoke(std::string_view member, const CallStyle& style,
                          const std::vector<Argument>& arguments) const {
    std::vector<std::wstring> texts = {Wide(member)};
    for (const Argument& argument : arguments)
        if (!argument.Name().empty()) texts.push_back(Wide(argument.Name()));
    std::vector<LPOLESTR> names;
    for (std::wstring& text : texts) names.push_back(text.data());
    std::vector<DISPID> ids(names.size(), DISPID_UNKNOWN);

    Outcome outcome;
    outcome.result = outcome.number = E_POINTER;
    if (!object_) return outcome;
    const auto count = static_cast<UINT>(names.size());
    outcome.result =
        object_->GetIDsOfNames(IID_NULL, names.data(), count, style.locale, ids.data());
    outcome.number = outcome.result;
    outcome.nameUnknown = FAILED(outcome.result);
    if (outcome.nameUnknown) return outcome;
    return InvokeId(ids.front(), style, arguments, {ids.begin() + 1, ids.end()});
}

Outcome LateBound::InvokeId(DISPID id, const CallStyle& style,
                            const std::vector<Argument>& arguments,
                            const std::vector<DISPID>& nameIds) const {
    // The order of DISPPARAMS: named arguments first, then the others, each last to first. The
    // slots are bare copies, so that Value keeps owning what is in them.
    std::vector<VARIANT> slots;
    for (auto each = arguments.rbegin(); each != arguments.rend(); ++each)
        if (!each->Name().empty()) slots.push_back(each->Get());
    for (auto each = arguments.rbegin(); each != arguments.rend(); ++each)
        if (each->Name().empty()) slots.push_back(each->Get());
    const bool put = (style.kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    std::vector<DISPID> named;
    if (put && style.namesTheValue) named.push_back(DISPID_PROPERTYPUT);
    named.insert(named.end(), nameIds.rbegin(), nameIds.rend());

    DISPPARAMS parameters = {slots.data(), named.empty() ? nullptr : named.data(),
                             static_cast<UINT>(slots.size()), static_cast<UINT>(named.size())};
    VARIANT result;
    VariantInit(&result);
    Exception exception;
    UINT badArgument = untouched;

    Outcome outcome;
    const Ref<IDispatch> alive = object_;
    outcome.result = alive->Invoke(id, IID_NULL, style.locale, style.kind, &parameters,
                                   style.wantsResult ? &result : nullptr,
                                   style.wantsException ? &exception : nullptr,
                                   style.wantsBadArgument ? &badArgument : nullptr);
    outcome.value = Value::Taken(result);
    outcome.number = FAILED(outcome.result) ? outcome.result : S_OK;
    if (badArgument != untouched) outcome.badArgument = badArgument;
    if (outcome.result == DISP_E_EXCEPTION) {
        TakeException(exception, outcome);
    } else {
        outcome.filledOnSuccess = exception.bstrDescription != nullptr ||
                                  exception.bstrSource != nullptr || exception.scode != 0 ||
                                  exception.wCode != 0;
    }
    return outcome;
}

std::vector<Value> LateBound::Elements(ULONG block) const {
    std::vector<Value> elements;
    const Outcome enumerator = InvokeId(DISPID_NEWENUM, {}, {}, {});
    EXPECT_TRUE(enumerator);
    const auto source = Query<IEnumVARIANT>(enumerator.value.Unknown());
    if (!source) {
        ADD_FAILURE() << "no enumerator: " << enumerator;
        return elements;
    }
    std::vector<VARIANT> slots(block);
    HRESULT result = S_OK;
    while (result == S_OK) {
        ULONG given = 0;
        for (VARIANT& slot : slots) VariantInit(&slot);
        result = source->Next(block, slots.data(), &given);
        EXPECT_LE(given, block);
        for (ULONG index = 0; index < std::min(given, block); ++index)
            elements.push_back(Value::Taken(slots[index]));
        if (given == 0) break;
    }
    EXPECT_TRUE(SUCCEEDED(result)) << DescribeResult(result);
    return elements;
}

}  // namespace support
