#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace repository::com {

/// An enumeration as text: Kind::{A | B}.
struct Signature {
    std::string name;
    std::vector<std::string> atoms;
};

/// None for a text that is no signature.
std::optional<Signature> ParseSignature(std::string_view text);

/// The names in a text such as A | B, blanks around them left out.
std::vector<std::string> SplitAtoms(std::string_view text);

}  // namespace repository::com
