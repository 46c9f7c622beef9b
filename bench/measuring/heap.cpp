#include "measuring/heap.h"

#include <malloc.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace kxjob::bench {
namespace {

/// What the allocator keeps in front of each piece.
constexpr std::size_t kHeader = 8;

thread_local bool counting = false;
thread_local std::size_t allocations = 0;
thread_local std::int64_t held = 0;  // below 0 when something older is given back
thread_local std::int64_t mostHeld = 0;

void* Allocated(std::size_t size) {
    void* const piece = std::malloc(size);
    if (piece == nullptr) throw std::bad_alloc();
    if (counting) {
        ++allocations;
        held += static_cast<std::int64_t>(malloc_usable_size(piece) + kHeader);
        mostHeld = std::max(mostHeld, held);
    }
    return piece;
}

void GivenBack(void* piece) {
    if (counting && piece != nullptr) held -= static_cast<std::int64_t>(malloc_usable_size(piece) + kHeader);
    std::free(piece);
}

}  // namespace

HeapCount::HeapCount() {
    allocations = 0;
    held = 0;
    mostHeld = 0;
    counting = true;
}

HeapCount::~HeapCount() {
    counting = false;
}

HeapUse HeapCount::SoFar() const {
    return {allocations, static_cast<std::size_t>(std::max<std::int64_t>(held, 0)),
            static_cast<std::size_t>(mostHeld)};
}

}  // namespace kxjob::bench

void* operator new(std::size_t size) {
    return kxjob::bench::Allocated(size);
}
void operator delete(void* piece) noexcept {
    kxjob::bench::GivenBack(piece);
}
void operator delete(void* piece, std::size_t /*size*/) noexcept {
    kxjob::bench::GivenBack(piece);
}
