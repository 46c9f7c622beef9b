#include <memory>

#include "collaborators/collaborator_factory.h"
#include "composition/default_collaborators.h"
#include "defaults/components/component_catalog.h"
#include "defaults/components/registry_object_factory.h"
#include "defaults/components/registry_platform.h"
#include "siblings/stand_ins.h"

namespace kxjob {
namespace {

/// Components come from the process's registry, the configuration, or the stand-ins that ship with it.
class NativeCollaborators : public DefaultCollaborators {
public:
    std::shared_ptr<Platform> MakePlatform() override {
        return std::make_shared<RegistryPlatform>(Catalog());
    }
    std::shared_ptr<ObjectFactory> MakeObjectFactory() override {
        return std::make_shared<RegistryObjectFactory>(Catalog());
    }

private:
    const std::shared_ptr<const ComponentCatalog>& Catalog() {
        if (catalog_ == nullptr) catalog_ = MakeCatalog();
        return catalog_;
    }

    std::shared_ptr<const ComponentCatalog> MakeCatalog() {
        auto catalog = std::make_shared<ComponentCatalog>(Settings());
        const StandInParts parts{Sessions(), MakeTraceLog()};
        for (const StandIn& standIn : StandIns()) {
            catalog->AddStandIn(standIn.progId, [&standIn, parts] { return standIn.create(parts); });
        }
        return catalog;
    }

    std::shared_ptr<const ComponentCatalog> catalog_;
};

}  // namespace

std::shared_ptr<CollaboratorFactory> MakePlatformCollaborators() {
    return std::make_shared<NativeCollaborators>();
}

}  // namespace kxjob
