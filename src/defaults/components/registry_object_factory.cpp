#include "defaults/components/registry_object_factory.h"

#include <utility>

#include "kxjob/automation_error.h"

namespace kxjob {

RegistryObjectFactory::RegistryObjectFactory(std::shared_ptr<const ComponentCatalog> catalog)
    : catalog_(std::move(catalog)) {}

ComponentRef RegistryObjectFactory::CreateVersioned(const std::string& progIdTemplate) {
    return catalog_->Create(catalog_->VersionedProgId(progIdTemplate));
}

bool RegistryObjectFactory::CanCreate(const std::string& progId) {
    try {
        return catalog_->Create(progId) != nullptr;
    } catch (const AutomationError&) {
        return false;
    }
}

}  // namespace kxjob
