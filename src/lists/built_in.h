#pragma once

#include <comdef.h>

namespace lists {

/// Whether a meta node is one of the three that every repository has for its own sake.
inline bool IsBuiltIn(const _bstr_t& name) {
    return name == _bstr_t(L"MetaNode") || name == _bstr_t(L"MetaLink") ||
           name == _bstr_t(L"MetaProperty");
}

}  // namespace lists
