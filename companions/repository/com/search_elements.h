#pragma once

#include <memory>
#include <string>

#include "repository/com/elements.h"
#include "repository/com/repository.h"

namespace repository::com {

/// The nodes and links that a search for a text finds, best first.
std::unique_ptr<Elements> MakeSearchElements(Repository& repository, const std::string& text);

}  // namespace repository::com
