#pragma once

#include "hosting/ref.h"

namespace support {

using hosting::Adopt;
using hosting::Make;
using hosting::Query;
using hosting::Ref;

}  // namespace support
