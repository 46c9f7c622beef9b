#include "defaults/store/optional_table.h"

namespace kxjob {

Value QueryOptionalTable(SessionCache& sessions, const std::string& connectionString,
                         const std::string& sql) {
    try {
        return sessions.Use(connectionString, [&](Session& session) { return session.Query(sql); });
    } catch (const AutomationError& error) {
        if (IsMissingTable(error)) return {};
        throw;
    }
}

}  // namespace kxjob
