#pragma once

#include <cstddef>

namespace kxjob::bench {

/// What `operator new` of this process, wherever it is called, has given out since counting began.
struct HeapUse {
    std::size_t allocations = 0;
    std::size_t bytesHeld = 0;  // with what the allocator adds to them
    std::size_t mostBytesHeld = 0;
};

/// Counts what the calling thread asks for while it lives.
class HeapCount {
public:
    HeapCount();
    HeapCount(const HeapCount&) = delete;
    HeapCount& operator=(const HeapCount&) = delete;
    ~HeapCount();

    HeapUse SoFar() const;
};

}  // namespace kxjob::bench
