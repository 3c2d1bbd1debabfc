#pragma once

#include <memory>

#include "repository/com/elements.h"
#include "repository/com/repository.h"

namespace repository::com {

// The parts of the meta model, as collections.

std::unique_ptr<Elements> MakeMetaNodeElements(Repository& repository);
std::unique_ptr<Elements> MakeMetaLinkElements(Repository& repository);
std::unique_ptr<Elements> MakeMetaTypeElements(Repository& repository);
std::unique_ptr<Elements> MakeMetaEnumElements(Repository& repository);

/// The meta properties of all meta nodes and meta links.
std::unique_ptr<Elements> MakeMetaPropertyElements(Repository& repository);

}  // namespace repository::com
