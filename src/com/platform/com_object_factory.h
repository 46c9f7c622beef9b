#pragma once

#include <string>

#include "collaborators/object_factory.h"
#include "com/platform/com_platform.h"

namespace kxjob {

/// Makes the application's components through COM, under the installed version tag.
class ComObjectFactory : public ObjectFactory {
public:
    explicit ComObjectFactory(std::string versionTag);

    ComponentRef CreateVersioned(const std::string& progIdTemplate) override;
    bool CanCreate(const std::string& progId) override;

private:
    std::string versionTag_;
    ComPlatform platform_;
};

}  // namespace kxjob
