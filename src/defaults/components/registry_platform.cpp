#include "defaults/components/registry_platform.h"

#include <utility>

namespace kxjob {

RegistryPlatform::RegistryPlatform(std::shared_ptr<const ComponentCatalog> catalog)
    : catalog_(std::move(catalog)) {}

ComponentRef RegistryPlatform::CreateObject(const std::string& progId) {
    return catalog_->Create(progId);
}

}  // namespace kxjob
