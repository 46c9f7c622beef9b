#include "defaults/store/session_cache.h"

#include "defaults/store/data_access_error.h"
#include "defaults/store/open_session.h"

namespace kxjob {

Session& SessionCache::Of(const std::string& connectionString) {
    const auto open = sessions_.find(connectionString);
    if (open != sessions_.end()) return *open->second;
    return *sessions_.emplace(connectionString, OpenSession(connectionString)).first->second;
}

bool IsMissingTable(const AutomationError& error) {
    return error.Number() == error_number::kStatementFailed && StateOf(error) == "42S02";
}

}  // namespace kxjob
