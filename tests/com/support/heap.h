#pragma once

#include <ole2.h>
#include <windows.h>

#include <cstddef>
#include <vector>

namespace kxjob::testing_support {

/// How many bytes this process has in use on its heaps.
inline std::size_t BytesInUse() {
    std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr));
    GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    std::size_t bytes = 0;
    for (HANDLE heap : heaps) {
        PROCESS_HEAP_ENTRY entry{};
        HeapLock(heap);
        while (HeapWalk(heap, &entry) != FALSE) {
            if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) bytes += entry.cbData;
        }
        HeapUnlock(heap);
    }
    return bytes;
}

}  // namespace kxjob::testing_support
