#include "defaults/components/process_registry.h"

#include <mutex>
#include <unordered_map>
#include <utility>

#include "automation/letter_case.h"
#include "kxjob/component_registry.h"

namespace kxjob {
namespace {

struct ProcessRegistry {
    std::mutex mutex;
    std::unordered_map<std::string, std::function<ComponentRef()>> creators;  // by folded ProgID
};

ProcessRegistry& Registry() {
    // Never destroyed: threads may still create components while the process ends.
    static auto& registry = *new ProcessRegistry;
    return registry;
}

}  // namespace

void RegisterComponent(const std::string& progId, std::function<ComponentRef()> create) {
    ProcessRegistry& registry = Registry();
    const std::lock_guard lock(registry.mutex);
    registry.creators.insert_or_assign(FoldedCase(progId), std::move(create));
}

void UnregisterComponent(const std::string& progId) {
    ProcessRegistry& registry = Registry();
    const std::lock_guard lock(registry.mutex);
    registry.creators.erase(FoldedCase(progId));
}

std::function<ComponentRef()> RegisteredCreator(const std::string& progId) {
    ProcessRegistry& registry = Registry();
    const std::lock_guard lock(registry.mutex);
    const auto found = registry.creators.find(FoldedCase(progId));
    return found == registry.creators.end() ? nullptr : found->second;
}

}  // namespace kxjob
