#include "fuzz/lattice.h"

#include <cmath>
#include <limits>

namespace fuzz {

using support::Value;

namespace {

/// A value of a type that C++ has no constructor for here.
Value OfType(VARTYPE type, long long bits) {
    Value value;
    V_I8(&value) = bits;
    V_VT(&value) = type;
    return value;
}

Value Single(float number) {
    Value value;
    V_R4(&value) = number;
    V_VT(&value) = VT_R4;
    return value;
}

Value Decimal(ULONG high, BYTE scale) {
    Value value;
    V_DECIMAL(&value) = {};
    V_DECIMAL(&value).Hi32 = high;
    V_DECIMAL(&value).scale = scale;
    V_VT(&value) = VT_DECIMAL;
    return value;
}

Value Grid() {
    SAFEARRAYBOUND bounds[] = {{2, -1}, {3, 5}};
    Value value;
    V_ARRAY(&value) = SafeArrayCreate(VT_I4, 2, bounds);
    V_VT(&value) = VT_ARRAY | VT_I4;
    return value;
}

Value NullArray() {
    Value value;
    V_ARRAY(&value) = nullptr;
    V_VT(&value) = VT_ARRAY | VT_UI1;
    return value;
}

Value NullUnknown() {
    Value value;
    V_UNKNOWN(&value) = nullptr;
    V_VT(&value) = VT_UNKNOWN;
    return value;
}

void AddNumbers(std::vector<NamedValue>& lattice) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    lattice.insert(lattice.end(),
                   {{"True", true},
                    {"False", false},
                    {"an odd Boolean", OfType(VT_BOOL, 5)},
                    {"I2 0", static_cast<short>(0)},
                    {"I2 -1", static_cast<short>(-1)},
                    {"I2 32767", static_cast<short>(32767)},
                    {"I4 0", 0},
                    {"I4 1", 1},
                    {"I4 2", 2},
                    {"I4 -1", -1},
                    {"I4 2147483647", 2147483647L},
                    {"I4 -2147483648", -2147483647L - 1},
                    {"UI1 255", OfType(VT_UI1, 255)},
                    {"I1 -128", OfType(VT_I1, -128)},
                    {"UI2 65535", OfType(VT_UI2, 65535)},
                    {"UI4 4294967295", OfType(VT_UI4, 4294967295LL)},
                    {"INT -7", OfType(VT_INT, -7)},
                    {"UINT 7", OfType(VT_UINT, 7)},
                    {"I8 huge", OfType(VT_I8, std::numeric_limits<long long>::max())},
                    {"UI8 huge", OfType(VT_UI8, -1)},
                    {"R4 0.5", Single(0.5F)},
                    {"R4 infinite", Single(std::numeric_limits<float>::infinity())},
                    {"R8 2.5", 2.5},
                    {"R8 1e308", 1e308},
                    {"R8 -1e308", -1e308},
                    {"R8 infinite", infinity},
                    {"R8 no number", std::nan("")},
                    {"CY largest", support::Currency(std::numeric_limits<long long>::max())},
                    {"DATE 0", support::Date(0)},
                    {"DATE impossible", support::Date(-1e9)},
                    {"DECIMAL large", Decimal(0xFFFFFFFF, 0)},
                    {"DECIMAL of a bad scale", Decimal(1, 200)}});
}

void AddTexts(std::vector<NamedValue>& lattice) {
    lattice.insert(lattice.end(), {{"an empty text", ""},
                                   {"a null text", support::NullText()},
                                   {"Name", "Name"},
                                   {"the text 1", "1"},
                                   {"the text -5e400", "-5e400"},
                                   {"a text with a zero", std::string("a\0b", 3)},
                                   {"letters of many alphabets", "Grün Ω 日本 \U0001F600"},
                                   {"half a surrogate pair", std::wstring(1, wchar_t{0xD800})},
                                   {"a long text", std::string(100000, 'x')}});
}

}  // namespace

std::vector<NamedValue> MakeLattice(const Zoo& zoo) {
    std::vector<NamedValue> lattice = {
        {"Empty", support::Empty()},
        {"Null", support::Null()},
        {"Nothing", support::Nothing()},
        {"Nothing as IUnknown", NullUnknown()},
        {"nothing at all", support::Omitted()},
        {"an error value", support::ErrorValue(E_FAIL)},
        {"no array", NullArray()},
        {"bytes", support::Bytes({1, 2, 3})},
        {"no bytes", support::Bytes({})},
        {"an array of variants", support::Array({1, "x", support::Nothing()})},
        {"a grid", Grid()},
        {"an unknown type", OfType(99, 1)},
    };
    AddNumbers(lattice);
    AddTexts(lattice);
    for (const Zoo::Animal& animal : zoo.Animals()) lattice.push_back({animal.name, animal.object});
    return lattice;
}

std::size_t SuitableIndex(const std::vector<NamedValue>& lattice, VARTYPE type) {
    const char* wanted = "I4 1";
    if (type == VT_BSTR) wanted = "Name";
    if (type == VT_DISPATCH || type == VT_UNKNOWN || type == VT_VARIANT) wanted = "anything";
    if (type == VT_BOOL) wanted = "True";
    for (std::size_t index = 0; index < lattice.size(); ++index)
        if (lattice[index].name == wanted) return index;
    return 0;
}

}  // namespace fuzz
