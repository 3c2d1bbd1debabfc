#pragma once

#include <string>
#include <string_view>

namespace repository::store {

/// The form of a UTF-8 text in which texts that differ in case only are the same: Unicode's simple
/// case folding (version 14), character by character. It stands in the files' key columns, so its
/// table never changes. Bytes that are no UTF-8 stay as they are.
std::string FoldCase(std::string_view text);

}  // namespace repository::store
