#include "com/platform/com_object_factory.h"

#include <utility>

#include "defaults/components/versioned_prog_id.h"
#include "kxjob/automation_error.h"

namespace kxjob {

ComObjectFactory::ComObjectFactory(std::string versionTag) : versionTag_(std::move(versionTag)) {}

ComponentRef ComObjectFactory::CreateVersioned(const std::string& progIdTemplate) {
    return platform_.CreateObject(VersionedProgId(progIdTemplate, versionTag_));
}

bool ComObjectFactory::CanCreate(const std::string& progId) {
    try {
        return platform_.CreateObject(progId) != nullptr;
    } catch (const AutomationError&) {
        return false;
    }
}

}  // namespace kxjob
