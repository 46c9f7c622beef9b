#pragma once

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>

#include "defaults/configuration/default_settings.h"
#include "kxjob/component.h"

namespace kxjob {

/// Every component that one thread can create: what the process has registered, else what the configuration
/// names, else the stand-ins.
class ComponentCatalog {
public:
    using Creator = std::function<ComponentRef()>;

    explicit ComponentCatalog(DefaultSettings settings) : settings_(std::move(settings)) {}

    void AddStandIn(const std::string& progId, Creator create);

    /// The ProgID that a template stands for: each "%v" is the installed version tag.
    std::string VersionedProgId(const std::string& progIdTemplate) const;
    /// A new object, never null. Raises "class not registered" (0x800401F3), naming the ProgID, when there is
    /// no such component or its creator gives none.
    ComponentRef Create(const std::string& progId) const;

private:
    ComponentRef CreateFirstFound(const std::string& progId) const;

    DefaultSettings settings_;
    std::unordered_map<std::string, Creator> standIns_;  // by folded ProgID
};

}  // namespace kxjob
