#pragma once

#include <string>
#include <vector>

#include "repository/store/store.h"

namespace repository::type_library {

/// Imports a COM type library (.tlb, .olb, or the one inside a .dll, .ocx or .exe) as one change,
/// and answers messages about what was not understood. The kinds of type library elements become
/// meta nodes, their relations meta links, the library's elements nodes and links with identifiers
/// made of the library's id and version and the elements' names.
///
/// A library that is in the repository already is not imported again (457). Types that it takes
/// from other libraries become nodes of those, which a later import of the other library completes.
/// Errors: 53 for a missing file, 321 for a file without type library, 70 for one that cannot be
/// read.
std::vector<std::string> Import(store::Store& store, const std::wstring& file);

}  // namespace repository::type_library
