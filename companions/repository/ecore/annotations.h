#pragma once

#include <string>
#include <string_view>

#include "repository/xml/tree.h"

namespace repository::ecore {

/// The value of an entry of an element's annotation, else the other text.
std::string DetailOr(const xml::Tree& tree, std::size_t place, std::string_view source,
                     std::string_view key, std::string_view otherwise = {});

/// Writes an entry of an element's annotation; one that is there is replaced.
void SetDetail(xml::Tree& tree, std::size_t place, std::string_view source, std::string_view key,
               std::string_view value);

}  // namespace repository::ecore
