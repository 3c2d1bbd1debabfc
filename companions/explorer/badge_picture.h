#pragma once

#include "explorer/badge.h"
#include "hosting/ref.h"

#include <cstdint>
#include <vector>

namespace explorer {

/// A badge's pixels, in rows from the top: 0xAARRGGBB.
[[nodiscard]] std::vector<std::uint32_t> MakePixels(const Badge& badge, int size);

/// A badge as a picture object for a control, an icon of `size` times `size` pixels. Throws
/// hosting::Error.
[[nodiscard]] hosting::Ref<IDispatch> MakePicture(const Badge& badge, int size);

}  // namespace explorer
