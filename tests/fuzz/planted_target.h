#pragma once

#include "support/ref.h"

#include <string>

namespace fuzz {

/// An object with type information and one fault, to prove the fuzzer with: "crash" writes where
/// nothing is when it is given a certain value, "hang" never returns from it, "leak" keeps the
/// objects that it is given, "overrelease" releases them once too often, "trap" hits an illegal
/// instruction, and "sound" does nothing wrong.
[[nodiscard]] support::Ref<IDispatch> MakePlantedTarget(const std::string& fault);

}  // namespace fuzz
