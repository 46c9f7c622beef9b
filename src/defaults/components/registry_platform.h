#pragma once

#include <memory>
#include <string>

#include "collaborators/platform.h"
#include "defaults/components/component_catalog.h"

namespace kxjob {

/// Creates components out of a catalog.
class RegistryPlatform : public Platform {
public:
    explicit RegistryPlatform(std::shared_ptr<const ComponentCatalog> catalog);
    ComponentRef CreateObject(const std::string& progId) override;

private:
    std::shared_ptr<const ComponentCatalog> catalog_;
};

}  // namespace kxjob
