#pragma once

#include <string_view>

namespace repository::xml {

/// The characters that the 256 bytes of a further encoding mean, -1 where a byte means none; null
/// for an unknown encoding. The names are compared without case.
const int* CharactersOf(std::string_view encoding);

}  // namespace repository::xml
