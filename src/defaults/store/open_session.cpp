#include "defaults/store/open_session.h"

#include <algorithm>

#include "defaults/store/connection_string.h"
#include "defaults/store/create_database_file.h"
#include "defaults/store/data_access_error.h"
#include "defaults/store/engine.h"

namespace kxjob {
namespace {

const Engine& EngineFor(const ConnectionString& connection) {
    const std::span<const Engine> engines = StoreEngines();
    const auto engine = std::find_if(engines.begin(), engines.end(),
                                     [&](const Engine& candidate) { return candidate.takes(connection); });
    if (engine == engines.end()) {
        RaiseConnectionFailed(
            "the connection string names no store; it takes the form \"Driver=SQLite;Database=FILE\", "
            "\"Driver={...};...\", \"DSN=...;...\" or \"Provider=...;...\"");
    }
    return *engine;
}

}  // namespace

std::unique_ptr<Session> OpenSession(const std::string& connectionString) {
    const ConnectionString connection(connectionString);
    return EngineFor(connection).open(connection);
}

void CreateDatabaseFile(const std::string& connectionString) {
    const ConnectionString connection(connectionString);
    EngineFor(connection).createDatabase(connection);
}

}  // namespace kxjob
