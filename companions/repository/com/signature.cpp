#include "repository/com/signature.h"

namespace repository::com {

namespace {

std::string_view Trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

std::optional<Signature> ParseSignature(std::string_view text) {
    constexpr std::string_view open = "::{";
    const auto at = text.find(open);
    if (at == 0 || at == std::string_view::npos || !text.ends_with('}')) return std::nullopt;
    const std::string_view inside = text.substr(at + open.size());
    return Signature{std::string(text.substr(0, at)),
                     SplitAtoms(inside.substr(0, inside.size() - 1))};
}

std::vector<std::string> SplitAtoms(std::string_view text) {
    std::vector<std::string> atoms;
    if (Trimmed(text).empty()) return atoms;
    for (;;) {
        const auto bar = text.find('|');
        atoms.emplace_back(Trimmed(text.substr(0, bar)));
        if (bar == std::string_view::npos) return atoms;
        text.remove_prefix(bar + 1);
    }
}

}  // namespace repository::com
