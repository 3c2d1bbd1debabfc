#pragma once

#include "explorer/badge.h"
#include "hosting/ref.h"

namespace explorer {

/// A badge as a picture object for a control, an icon of `size` times `size` pixels. Throws
/// hosting::Error.
[[nodiscard]] hosting::Ref<IDispatch> MakePicture(const Badge& badge, int size);

}  // namespace explorer
