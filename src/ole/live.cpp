#include "ole/live.h"

namespace ole {

Live& LiveCounts() {
    static Live counts;
    return counts;
}

}  // namespace ole
