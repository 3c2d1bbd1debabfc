#include "repository/store/checked_value.h"

#include <cmath>

#include "repository/store/error.h"
#include "repository/store/text.h"

namespace repository::store {

namespace {

/// The name of the enumeration's value that `text` means: the same, or the only one that is the
/// same without case.
std::string AtomOf(const MetaEnum& enumeration, const std::string& text) {
    const MetaAtom* found = nullptr;
    int matches = 0;
    const std::string key = FoldCase(text);
    for (const auto& atom : enumeration.atoms) {
        if (atom->name == text) return text;
        if (FoldCase(atom->name) != key) continue;
        found = atom.get();
        ++matches;
    }
    if (matches == 1) return found->name;
    throw Error(Number::invalidPropertyValue,
                "\"" + text + "\" is no value of the enumeration \"" + enumeration.name + "\"");
}

bool IsNoNumber(const Value& value) {
    if (const auto* number = std::get_if<double>(&value)) return std::isnan(*number);
    if (const auto* number = std::get_if<float>(&value)) return std::isnan(*number);
    if (const auto* date = std::get_if<Date>(&value)) return std::isnan(date->days);
    return false;
}

}  // namespace

Value Checked(const MetaProperty& property, const Value& value) {
    if (!Fits(value, property.type->dataType)) {
        throw Error(Number::typeMismatch, "The values of \"" + property.name + "\" are of type " +
                                              std::string(WordOf(property.type->dataType)));
    }
    if (IsNoNumber(value)) {
        throw Error(Number::invalidPropertyValue,
                    "The value of \"" + property.name + "\" is not a number");
    }
    if (property.type->enumeration) {
        if (const auto* text = std::get_if<std::string>(&value)) {
            return AtomOf(*property.type->enumeration, *text);
        }
    }
    return value;
}

}  // namespace repository::store
