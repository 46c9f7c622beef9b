#include "contract/library_thread.h"

#include "collaborators/this_thread.h"

namespace kxjob::testing_support {

struct LibraryThread::Kept {};

LibraryThread::LibraryThread() = default;

LibraryThread::~LibraryThread() {
    InstallCollaborators(nullptr);
}

}  // namespace kxjob::testing_support
