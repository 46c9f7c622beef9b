#include "defaults/configuration/configuration_error.h"

#include "kxjob/automation_error.h"

namespace kxjob {

void RaiseConfigurationError(const std::string& description) {
    throw AutomationError(error_number::kConnectionFailed, "kxJob.Configuration", description);
}

}  // namespace kxjob
