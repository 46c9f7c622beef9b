#pragma once

#include <memory>
#include <string>

#include "collaborators/object_factory.h"
#include "defaults/components/component_catalog.h"

namespace kxjob {

/// Creates components out of a catalog. Whether one can be created is found out by creating it.
class RegistryObjectFactory : public ObjectFactory {
public:
    explicit RegistryObjectFactory(std::shared_ptr<const ComponentCatalog> catalog);
    ComponentRef CreateVersioned(const std::string& progIdTemplate) override;
    bool CanCreate(const std::string& progId) override;

private:
    std::shared_ptr<const ComponentCatalog> catalog_;
};

}  // namespace kxjob
