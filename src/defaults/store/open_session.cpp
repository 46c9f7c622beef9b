#include "defaults/store/open_session.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "automation/letter_case.h"
#include "defaults/store/connection_string.h"
#include "defaults/store/create_database_file.h"
#include "defaults/store/data_access_error.h"
#include "defaults/store/sqlite/sqlite_opening.h"
#include "defaults/store/sqlite/sqlite_session.h"

namespace kxjob {
namespace {

/// One engine family: the driver names it takes, and what it does with the rest of the connection string.
struct Engine {
    bool (*takes)(std::string_view driver);
    std::unique_ptr<Session> (*open)(const ConnectionString& connection);
    void (*createDatabase)(const ConnectionString& connection);
};

bool IsSqliteDriver(std::string_view driver) {
    return FoldedCase(driver) == "sqlite";
}

std::string DatabaseFile(const ConnectionString& connection) {
    return std::string(connection.Value("Database"));
}

std::unique_ptr<Session> OpenSqlite(const ConnectionString& connection) {
    return std::make_unique<SqliteSession>(DatabaseFile(connection));
}

void CreateSqlite(const ConnectionString& connection) {
    CreateSqliteFile(DatabaseFile(connection));
}

constexpr std::array kEngines = {Engine{IsSqliteDriver, OpenSqlite, CreateSqlite}};

const Engine& EngineFor(const ConnectionString& connection) {
    const std::string_view driver = connection.Value("Driver");
    const auto* engine = std::find_if(kEngines.begin(), kEngines.end(),
                                      [&](const Engine& candidate) { return candidate.takes(driver); });
    if (engine == kEngines.end()) {
        RaiseConnectionFailed(
            "this build takes connection strings of the form \"Driver=SQLite;Database=FILE\"");
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
