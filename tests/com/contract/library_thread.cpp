#include "contract/library_thread.h"

#include "com/support/apartment.h"

namespace kxjob::testing_support {

/// The server, and what this program links of the library, keep what they have by apartment.
struct LibraryThread::Kept {
    Apartment apartment;
};

LibraryThread::LibraryThread() : kept_(std::make_unique<Kept>()) {}

LibraryThread::~LibraryThread() = default;

}  // namespace kxjob::testing_support
