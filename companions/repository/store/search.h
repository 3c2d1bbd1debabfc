#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "repository/store/database.h"

namespace repository::store {

/// Whether objects were changed that the full-text index does not know of yet.
bool IsIndexOutdated(Database& database);

/// Brings the full-text index up to date.
void UpdateIndex(Database& database);

/// What the full-text index is asked for a text: every word of it, the last one as the beginning of
/// a word. Nothing in the text has another meaning than itself. Empty where the text has no word.
std::string IndexQuery(std::string_view text);

/// The ids of the nodes and links in whose names, descriptions and other texts all words occur,
/// best first.
std::vector<Id> SearchIndex(Database& database, std::string_view text);

}  // namespace repository::store
