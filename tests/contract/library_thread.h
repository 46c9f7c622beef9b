#pragma once

#include <memory>

namespace kxjob::testing_support {

/// The calling thread as a user of the library for the length of one test. At its end all that the library
/// keeps for the thread is closed: connections, the log. Each platform defines it.
class LibraryThread {
public:
    LibraryThread();
    LibraryThread(const LibraryThread&) = delete;
    LibraryThread& operator=(const LibraryThread&) = delete;
    ~LibraryThread();

private:
    struct Kept;
    std::unique_ptr<Kept> kept_;
};

}  // namespace kxjob::testing_support
