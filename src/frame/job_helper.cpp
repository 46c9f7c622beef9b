#include "kxjob/job_helper.h"

#include "collaborators/connection_settings.h"

namespace kxjob {

JobHelper::JobHelper() = default;

// Releases the cached configuration document.
JobHelper::~JobHelper() = default;

}  // namespace kxjob
