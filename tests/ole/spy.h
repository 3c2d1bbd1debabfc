#pragma once

#include <Spy.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ole/automation.h"
#include "ole/automation_collection.h"
#include "ole/connection_point.h"
#include "support/late_bound.h"
#include "support/value.h"

using ValuesObject = ole::AutomationCollection<_Values, CLSID_Values>;

/// An automation object whose members note what arrives (`Text("abc")`), run what the test gave
/// them to do, and write and answer what the test gave them to say.
class Spy final : public ole::Automation<_Spy, CLSID_Spy> {
public:
    Spy() : events_(*static_cast<_Spy*>(this), DIID___Spy) {}

    std::vector<std::string> calls;
    /// Written to by-reference arguments, converted to their types.
    std::optional<support::Value> change;
    /// What members with a result answer; nothing is written where there is none.
    std::optional<support::Value> answer;
    /// Runs inside each member, and may throw.
    std::function<void()> onCall;
    /// Runs after a by-reference argument was written to, and may throw.
    std::function<void()> onChanged;

    ole::ConnectionPoints& Events() { return events_; }

    STDMETHODIMP Text(BSTR* value) override;
    STDMETHODIMP Long(long* value) override;
    STDMETHODIMP Short(short* value) override;
    STDMETHODIMP Flag(VARIANT_BOOL* value) override;
    STDMETHODIMP Double(double* value) override;
    STDMETHODIMP Single(float* value) override;
    STDMETHODIMP Byte(BYTE* value) override;
    STDMETHODIMP Money(CY* value) override;
    STDMETHODIMP Moment(DATE* value) override;
    STDMETHODIMP Object(IDispatch** value) override;
    STDMETHODIMP Unknown(IUnknown** value) override;
    STDMETHODIMP Typed(_Spy** value) override;
    STDMETHODIMP Choice(Colour* value) override;
    STDMETHODIMP Any(VARIANT* value) override;
    STDMETHODIMP Bytes(SAFEARRAY** value) override;
    STDMETHODIMP Tint(Shade* value) override;
    STDMETHODIMP Made(Values** value) override;

    STDMETHODIMP AllByValue(BSTR text, long number, short brief, VARIANT_BOOL flag, double real,
                            float rough, BYTE octet, CY money, DATE moment, IDispatch* object,
                            IUnknown* unknown, _Spy* typed, Colour choice, VARIANT any,
                            SAFEARRAY* bytes) override;
    STDMETHODIMP Defaults(BSTR text, long number, VARIANT_BOOL flag) override;
    STDMETHODIMP Options(VARIANT* any, VARIANT plain, BSTR* text, IDispatch** object,
                         long* number) override;
    STDMETHODIMP Named(BSTR* first, long* second, VARIANT* third) override;
    STDMETHODIMP Fail() override;
    STDMETHODIMP Nothing() override;

    STDMETHODIMP GiveText(BSTR* value) override;
    STDMETHODIMP GiveLong(long* value) override;
    STDMETHODIMP GiveShort(short* value) override;
    STDMETHODIMP GiveFlag(VARIANT_BOOL* value) override;
    STDMETHODIMP GiveDouble(double* value) override;
    STDMETHODIMP GiveMoney(CY* value) override;
    STDMETHODIMP GiveMoment(DATE* value) override;
    STDMETHODIMP GiveObject(IDispatch** value) override;
    STDMETHODIMP GiveUnknown(IUnknown** value) override;
    STDMETHODIMP GiveTyped(_Spy** value) override;
    STDMETHODIMP GiveChoice(Colour* value) override;
    STDMETHODIMP GiveAny(VARIANT* value) override;
    STDMETHODIMP GiveBytes(SAFEARRAY** value) override;

    STDMETHODIMP get_Name(BSTR* value) override;
    STDMETHODIMP put_Name(BSTR* value) override;
    STDMETHODIMP get_Friend(IDispatch** value) override;
    STDMETHODIMP put_Friend(IDispatch** value) override;
    STDMETHODIMP putref_Friend(IDispatch** value) override;
    STDMETHODIMP putref_Bond(IDispatch* value) override;
    STDMETHODIMP get_Fixed(long* value) override;
    STDMETHODIMP get_Cell(VARIANT* row, VARIANT* column, VARIANT* value) override;
    STDMETHODIMP put_Cell(VARIANT* row, VARIANT* column, VARIANT* value) override;
    STDMETHODIMP get_Items(IDispatch** value) override;
    STDMETHODIMP get_Box(VARIANT* value) override;
    STDMETHODIMP get_Value(VARIANT* key, VARIANT* value) override;
    STDMETHODIMP get__NewEnum(IUnknown** enumerator) override;

private:
    void* FindInterface(REFIID id) override;

    /// Notes a call with these arguments and does what the test wants done.
    void Note(const std::string& name, std::initializer_list<VARIANT> arguments);
    HRESULT Pass(const char* name, VARTYPE type, void* value);
    HRESULT Give(const char* name, VARTYPE type, void* value);

    ole::ConnectionPoints events_;
};

/// A test with a spy that is called late-bound.
class SpyTest : public testing::Test {
protected:
    using Calls = std::vector<std::string>;

    ole::Ref<Spy> spy = ole::Make<Spy>();
    support::LateBound object = support::LateBound(static_cast<_Spy*>(spy.Get()));
};
