#include "foundation/keys.h"

namespace foundation {

_variant_t ContainsKey(const ole::Object& collection, const VARIANT& key) noexcept {
    try {
        const ole::Object found = ole::Object::From(collection.Value(key));
        return _variant_t(true);
    } catch (...) {
        return {};
    }
}

}  // namespace foundation
