#include "collaborators/this_thread.h"

namespace kxjob {

ThreadCollaborators::ThreadCollaborators(std::shared_ptr<CollaboratorFactory> factory)
    : factory_(std::move(factory)), observer_(factory_->MakeMethodObserver()) {}

ThreadCollaborators& ThisThread() {
    std::unique_ptr<ThreadCollaborators>& slot = ThreadSlot();
    if (slot == nullptr) slot = std::make_unique<ThreadCollaborators>(MakePlatformCollaborators());
    return *slot;
}

void InstallCollaborators(std::shared_ptr<CollaboratorFactory> factory) {
    ThreadSlot() = factory == nullptr ? nullptr : std::make_unique<ThreadCollaborators>(std::move(factory));
}

}  // namespace kxjob
