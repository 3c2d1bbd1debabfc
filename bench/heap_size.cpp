#include "heap_size.h"

#include <windows.h>

#include <vector>

namespace bench {

std::size_t HeapSize() {
    std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr) + 8);
    heaps.resize(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
    std::size_t size = 0;
    for (const HANDLE heap : heaps) {
        PROCESS_HEAP_ENTRY entry = {};
        HeapLock(heap);
        while (HeapWalk(heap, &entry)) {
            if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0)
                size += entry.cbData + entry.cbOverhead;
        }
        HeapUnlock(heap);
    }
    return size;
}

}  // namespace bench
