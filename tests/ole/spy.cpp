#include "spy.h"

#include <algorithm>

#include "ole/server.h"
#include "support/text.h"

namespace {

VARIANT Plain(VARTYPE type, const void* value, std::size_t size) {
    VARIANT plain = {};
    if (type == VT_VARIANT) return *static_cast<const VARIANT*>(value);
    std::copy_n(static_cast<const BYTE*>(value), size, &V_UI1(&plain));
    V_VT(&plain) = type;
    return plain;
}

std::size_t SizeOf(VARTYPE type) {
    switch (type) {
        case VT_UI1:
            return 1;
        case VT_I2:
        case VT_BOOL:
            return 2;
        case VT_I4:
        case VT_UI4:
        case VT_R4:
            return 4;
        case VT_R8:
        case VT_DATE:
        case VT_CY:
            return 8;
        case VT_VARIANT:
            return sizeof(VARIANT);
        default:
            return sizeof(void*);
    }
}

/// Puts `wanted`, converted to `type`, in the place of what is there.
void Write(VARTYPE type, void* value, const support::Value& wanted) {
    support::Value converted = wanted;
    if (type == VT_VARIANT) {
        std::swap(*static_cast<VARIANT*>(value), static_cast<VARIANT&>(converted));
        return;
    }
    converted.ChangeType(type);
    std::swap_ranges(&V_UI1(&converted), &V_UI1(&converted) + SizeOf(type),
                     static_cast<BYTE*>(value));
}

std::string Described(const VARIANT& value) {
    if (V_VT(&value) != (VT_ARRAY | VT_UI1)) return support::Describe(value);
    if (V_ARRAY(&value) == nullptr) return "no array";
    std::string text = "bytes";
    for (ULONG i = 0; i < V_ARRAY(&value)->rgsabound[0].cElements; ++i) {
        text += ' ' + std::to_string(static_cast<const BYTE*>(V_ARRAY(&value)->pvData)[i]);
    }
    return text;
}

template <class T>
VARIANT As(VARTYPE type, const T& value) {
    return Plain(type, &value, sizeof(value));
}

constexpr ole::Class classes[] = {
    {CLSID_Spy, ole::MakeClass<Spy>, 7, OLEMISC_INSIDEOUT | OLEMISC_ACTIVATEWHENVISIBLE},
};

}  // namespace

const ole::ServerDescription ole::server = {LIBID_OleTest, L"OleTest.X", classes};

void* Spy::FindInterface(REFIID id) {
    void* own = Automation::FindInterface(id);
    return own != nullptr ? own : events_.FindInterface(id);
}

void Spy::Note(const std::string& name, std::initializer_list<VARIANT> arguments) {
    std::string call = name + '(';
    for (const VARIANT& argument : arguments) {
        if (call.back() != '(') call += ", ";
        call += Described(argument);
    }
    calls.push_back(call + ')');
    if (onCall) onCall();
}

HRESULT Spy::Pass(const char* name, VARTYPE type, void* value) {
    return Run([&] {
        Note(name, {Plain(type, value, SizeOf(type))});
        if (change) Write(type, value, *change);
        if (onChanged) onChanged();
    });
}

HRESULT Spy::Give(const char* name, VARTYPE type, void* value) {
    return Run([&] {
        Note(name, {});
        if (answer) Write(type, value, *answer);
    });
}

HRESULT Spy::Text(BSTR* value) {
    return Pass("Text", VT_BSTR, value);
}
HRESULT Spy::Long(long* value) {
    return Pass("Long", VT_I4, value);
}
HRESULT Spy::Short(short* value) {
    return Pass("Short", VT_I2, value);
}
HRESULT Spy::Flag(VARIANT_BOOL* value) {
    return Pass("Flag", VT_BOOL, value);
}
HRESULT Spy::Double(double* value) {
    return Pass("Double", VT_R8, value);
}
HRESULT Spy::Single(float* value) {
    return Pass("Single", VT_R4, value);
}
HRESULT Spy::Byte(BYTE* value) {
    return Pass("Byte", VT_UI1, value);
}
HRESULT Spy::Money(CY* value) {
    return Pass("Money", VT_CY, value);
}
HRESULT Spy::Moment(DATE* value) {
    return Pass("Moment", VT_DATE, value);
}
HRESULT Spy::Object(IDispatch** value) {
    return Pass("Object", VT_DISPATCH, value);
}
HRESULT Spy::Unknown(IUnknown** value) {
    return Pass("Unknown", VT_UNKNOWN, value);
}
HRESULT Spy::Typed(_Spy** value) {
    return Pass("Typed", VT_DISPATCH, value);
}
HRESULT Spy::Choice(Colour* value) {
    return Pass("Choice", VT_I4, value);
}
HRESULT Spy::Any(VARIANT* value) {
    return Pass("Any", VT_VARIANT, value);
}
HRESULT Spy::Bytes(SAFEARRAY** value) {
    return Pass("Bytes", VT_ARRAY | VT_UI1, value);
}
HRESULT Spy::Tint(Shade* value) {
    return Pass("Tint", VT_UI4, value);
}
HRESULT Spy::Made(Values** value) {
    return Pass("Made", VT_DISPATCH, value);
}

HRESULT Spy::AllByValue(BSTR text, long number, short brief, VARIANT_BOOL flag, double real,
                        float rough, BYTE octet, CY money, DATE moment, IDispatch* object,
                        IUnknown* unknown, _Spy* typed, Colour choice, VARIANT any,
                        SAFEARRAY* bytes) {
    return Run([&] {
        Note("AllByValue",
             {As(VT_BSTR, text), As(VT_I4, number), As(VT_I2, brief), As(VT_BOOL, flag),
              As(VT_R8, real), As(VT_R4, rough), As(VT_UI1, octet), As(VT_CY, money),
              As(VT_DATE, moment), As(VT_DISPATCH, object), As(VT_UNKNOWN, unknown),
              As(VT_DISPATCH, typed), As(VT_I4, choice), any, As(VT_ARRAY | VT_UI1, bytes)});
    });
}

HRESULT Spy::Defaults(BSTR text, long number, VARIANT_BOOL flag) {
    return Run([&] {
        Note("Defaults", {As(VT_BSTR, text), As(VT_I4, number), As(VT_BOOL, flag)});
    });
}

HRESULT Spy::Options(VARIANT* any, VARIANT plain, BSTR* text, IDispatch** object, long* number) {
    return Run([&] {
        Note("Options",
             {*any, plain, As(VT_BSTR, *text), As(VT_DISPATCH, *object), As(VT_I4, *number)});
    });
}

HRESULT Spy::Named(BSTR* first, long* second, VARIANT* third) {
    return Run([&] {
        Note("Named", {As(VT_BSTR, *first), As(VT_I4, *second), *third});
        if (change) {
            Write(VT_BSTR, first, *change);
            Write(VT_I4, second, *change);
            Write(VT_VARIANT, third, *change);
        }
    });
}

HRESULT Spy::Fail() {
    return Run([&] { Note("Fail", {}); });
}
HRESULT Spy::Nothing() {
    return Run([&] { Note("Nothing", {}); });
}

HRESULT Spy::GiveText(BSTR* value) {
    return Give("GiveText", VT_BSTR, value);
}
HRESULT Spy::GiveLong(long* value) {
    return Give("GiveLong", VT_I4, value);
}
HRESULT Spy::GiveShort(short* value) {
    return Give("GiveShort", VT_I2, value);
}
HRESULT Spy::GiveFlag(VARIANT_BOOL* value) {
    return Give("GiveFlag", VT_BOOL, value);
}
HRESULT Spy::GiveDouble(double* value) {
    return Give("GiveDouble", VT_R8, value);
}
HRESULT Spy::GiveMoney(CY* value) {
    return Give("GiveMoney", VT_CY, value);
}
HRESULT Spy::GiveMoment(DATE* value) {
    return Give("GiveMoment", VT_DATE, value);
}
HRESULT Spy::GiveObject(IDispatch** value) {
    return Give("GiveObject", VT_DISPATCH, value);
}
HRESULT Spy::GiveUnknown(IUnknown** value) {
    return Give("GiveUnknown", VT_UNKNOWN, value);
}
HRESULT Spy::GiveTyped(_Spy** value) {
    return Give("GiveTyped", VT_DISPATCH, value);
}
HRESULT Spy::GiveChoice(Colour* value) {
    return Give("GiveChoice", VT_I4, value);
}
HRESULT Spy::GiveAny(VARIANT* value) {
    return Give("GiveAny", VT_VARIANT, value);
}
HRESULT Spy::GiveBytes(SAFEARRAY** value) {
    return Give("GiveBytes", VT_ARRAY | VT_UI1, value);
}

HRESULT Spy::get_Name(BSTR* value) {
    return Give("get Name", VT_BSTR, value);
}
HRESULT Spy::put_Name(BSTR* value) {
    return Pass("put Name", VT_BSTR, value);
}
HRESULT Spy::get_Friend(IDispatch** value) {
    return Give("get Friend", VT_DISPATCH, value);
}
HRESULT Spy::put_Friend(IDispatch** value) {
    return Pass("put Friend", VT_DISPATCH, value);
}
HRESULT Spy::putref_Friend(IDispatch** value) {
    return Pass("putref Friend", VT_DISPATCH, value);
}
HRESULT Spy::putref_Bond(IDispatch* value) {
    return Run([&] { Note("putref Bond", {As(VT_DISPATCH, value)}); });
}
HRESULT Spy::get_Fixed(long* value) {
    return Give("get Fixed", VT_I4, value);
}
HRESULT Spy::get_Cell(VARIANT* row, VARIANT* column, VARIANT* value) {
    return Run([&] {
        Note("get Cell", {*row, *column});
        if (answer) Write(VT_VARIANT, value, *answer);
    });
}
HRESULT Spy::put_Cell(VARIANT* row, VARIANT* column, VARIANT* value) {
    return Run([&] { Note("put Cell", {*row, *column, *value}); });
}
HRESULT Spy::get_Items(IDispatch** value) {
    return Give("get Items", VT_DISPATCH, value);
}
HRESULT Spy::get_Box(VARIANT* value) {
    return Give("get Box", VT_VARIANT, value);
}
HRESULT Spy::get_Value(VARIANT* key, VARIANT* value) {
    return Run([&] {
        Note("get Value", {*key});
        if (answer) Write(VT_VARIANT, value, *answer);
    });
}
HRESULT Spy::get__NewEnum(IUnknown** enumerator) {
    return Give("get _NewEnum", VT_UNKNOWN, enumerator);
}
