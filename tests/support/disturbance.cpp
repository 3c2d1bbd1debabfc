#include "support/disturbance.h"

namespace support {

bool Disturbance::Strikes(const Arguments* arguments) {
    if (firstArgument_) {
        if (arguments == nullptr || arguments->Count() == 0) return false;
        const Value first = (*arguments)[0];
        if (first.Type() != VT_BSTR || first.Text() != *firstArgument_) return false;
    }
    if (passing_ > 0) {
        --passing_;
        return false;
    }
    if (!remaining_) return true;
    if (*remaining_ == 0) return false;
    --*remaining_;
    return true;
}

}  // namespace support
