#pragma once

#include <cstddef>

namespace bench {

/// The bytes in use in all heaps of this process, with what each block costs beside its content.
std::size_t HeapSize();

}  // namespace bench
