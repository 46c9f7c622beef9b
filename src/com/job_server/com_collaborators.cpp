#include <memory>

#include "collaborators/collaborator_factory.h"
#include "collaborators/this_thread.h"
#include "com/apartment/apartment_local.h"
#include "com/platform/com_object_factory.h"
#include "com/platform/com_platform.h"
#include "composition/default_collaborators.h"

namespace kxjob {
namespace {

/// The application's components are found through COM.
class ComCollaborators : public DefaultCollaborators {
public:
    std::shared_ptr<Platform> MakePlatform() override { return std::make_shared<ComPlatform>(); }
    std::shared_ptr<ObjectFactory> MakeObjectFactory() override {
        return std::make_shared<ComObjectFactory>(Settings().ComponentVersion());
    }
};

}  // namespace

std::shared_ptr<CollaboratorFactory> MakePlatformCollaborators() {
    return std::make_shared<ComCollaborators>();
}

std::unique_ptr<ThreadCollaborators>& ThreadSlot() {
    return ApartmentLocal<std::unique_ptr<ThreadCollaborators>>::Get();
}

}  // namespace kxjob
