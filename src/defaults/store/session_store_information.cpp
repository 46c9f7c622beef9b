#include "defaults/store/session_store_information.h"

#include "kxjob/array.h"

namespace kxjob {

std::string SessionStoreInformation::EngineName(const std::string& connectionString) {
    return sessions_->Use(connectionString, [](Session& session) { return session.EngineName(); });
}

std::string SessionStoreInformation::EngineVersion(const std::string& connectionString) {
    return sessions_->Use(connectionString, [](Session& session) { return session.EngineVersion(); });
}

std::string SessionStoreInformation::NowISODateTime(const std::string& connectionString) {
    return sessions_->Use(connectionString, [](Session& session) {
        const std::string query = session.NowQuery();
        return query.empty() ? std::string() : session.Query(query).Rows().Cell(0, 0).ToText();
    });
}

}  // namespace kxjob
