#include "defaults/components/component_catalog.h"

#include <optional>
#include <utility>

#include "automation/letter_case.h"
#include "automation/runtime_error.h"
#include "defaults/components/command_component.h"
#include "defaults/components/library_component.h"
#include "defaults/components/process_registry.h"
#include "defaults/components/versioned_prog_id.h"
#include "kxjob/automation_error.h"

namespace kxjob {

void ComponentCatalog::AddStandIn(const std::string& progId, Creator create) {
    standIns_.insert_or_assign(FoldedCase(progId), std::move(create));
}

std::string ComponentCatalog::VersionedProgId(const std::string& progIdTemplate) const {
    return kxjob::VersionedProgId(progIdTemplate, settings_.ComponentVersion());
}

ComponentRef ComponentCatalog::Create(const std::string& progId) const {
    ComponentRef component = CreateFirstFound(progId);
    if (component == nullptr) RaiseRuntimeError(error_number::kClassNotRegistered, progId);
    return component;
}

ComponentRef ComponentCatalog::CreateFirstFound(const std::string& progId) const {
    if (const Creator registered = RegisteredCreator(progId)) return registered();
    if (const auto library = settings_.ComponentLibrary(progId)) return CreateFromLibrary(progId, *library);
    if (const auto command = settings_.ComponentCommand(progId))
        return CreateCommandComponent(progId, *command);
    const auto standIn = standIns_.find(FoldedCase(progId));
    return standIn == standIns_.end() ? nullptr : standIn->second();
}

}  // namespace kxjob
