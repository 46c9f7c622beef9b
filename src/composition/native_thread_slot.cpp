#include <memory>

#include "collaborators/this_thread.h"

namespace kxjob {

std::unique_ptr<ThreadCollaborators>& ThreadSlot() {
    thread_local std::unique_ptr<ThreadCollaborators> slot;
    return slot;
}

}  // namespace kxjob
