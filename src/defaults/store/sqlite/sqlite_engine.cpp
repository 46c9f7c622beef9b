#include "defaults/store/sqlite/sqlite_engine.h"

#include <string>

#include "defaults/store/embedded_driver.h"
#include "defaults/store/sqlite/sqlite_opening.h"
#include "defaults/store/sqlite/sqlite_session.h"

namespace kxjob {
namespace {

std::string DatabaseFile(const ConnectionString& connection) {
    return std::string(connection.Value("Database"));
}

std::unique_ptr<Session> Open(const ConnectionString& connection) {
    return std::make_unique<SqliteSession>(DatabaseFile(connection));
}

void Create(const ConnectionString& connection) {
    CreateSqliteFile(DatabaseFile(connection));
}

}  // namespace

Engine SqliteEngine() {
    return {NamesEmbeddedDriver, Open, Create};
}

}  // namespace kxjob
