#include "repository/ecore/names.h"

#include "repository/ecore/text.h"

namespace repository::ecore {

namespace {

constexpr std::string_view special = " \t\r\n/#:&%@";

}  // namespace

std::string LabelOf(const Feature& feature) {
    return feature.owner->name + "." + feature.name;
}

std::string IdentifierStem(std::string_view fileName) {
    std::string stem(Stem(fileName));
    for (char& letter : stem) {
        if (special.find(letter) != std::string_view::npos) letter = '_';
    }
    return stem;
}

std::string NameFor(const Class& type, std::string_view identifier) {
    const auto tilde = identifier.rfind('~');
    std::size_t number = 0;
    if (tilde != std::string_view::npos && ParseIndex(identifier.substr(tilde + 1), number)) {
        return type.name + " " + std::to_string(number);
    }
    return std::string(identifier);
}

std::string XmlName(std::string_view text) {
    std::string name;
    for (const char letter : text) {
        const bool isLetter = (letter >= 'A' && letter <= 'Z') ||
                              (letter >= 'a' && letter <= 'z') || letter == '_' ||
                              static_cast<unsigned char>(letter) >= 0x80;
        const bool isDigit = (letter >= '0' && letter <= '9') || letter == '-' || letter == '.';
        if (name.empty() && isDigit) name += '_';
        name += isLetter || isDigit ? letter : '_';
    }
    return name.empty() ? "_" : name;
}

bool IsPlainIdentifier(std::string_view identifier) {
    return !identifier.empty() && identifier.find_first_of(special) == std::string_view::npos;
}

}  // namespace repository::ecore
