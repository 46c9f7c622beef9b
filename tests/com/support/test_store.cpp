#include "com/support/test_store.h"

#include <windows.h>

#include <utility>

#include "defaults/store/create_database_file.h"
#include "defaults/store/open_session.h"
#include "defaults/store/script_library.h"
#include "defaults/store/script_statements.h"
#include "defaults/system/windows/wide_text.h"
#include "kxjob/collection.h"

namespace kxjob::testing_support {

TestStore::TestStore(std::string connectionString, DataStoreProvider provider, std::string qualifier)
    : connectionString_(std::move(connectionString)), provider_(provider), qualifier_(std::move(qualifier)) {}

std::string TestStore::NewFile(const std::string& name) {
    const std::string path = std::string(KXJOB_TEST_STORES) + "/" + name;
    // The driver is the host's and takes its paths; Windows calls see them below drive Z.
    CreateDirectoryW(ToWide("Z:" KXJOB_TEST_STORES).c_str(), nullptr);
    for (const char* ending : {"", "-wal", "-shm"}) DeleteFileW(ToWide("Z:" + path + ending).c_str());
    const std::string connectionString = "Driver={SQLite3};Database=" + path + ";";
    CreateDatabaseFile(connectionString);
    return connectionString;
}

TestStore TestStore::InFile(const std::string& name) {
    TestStore store(NewFile(name), dspSqlite, "main.");
    store.CreateTables();
    return store;
}

TestStore TestStore::OnServer(std::string connectionString, DataStoreProvider provider,
                              std::string qualifier) {
    TestStore store(std::move(connectionString), provider, std::move(qualifier));
    for (const char* table : {"job", "JobItem", "jobtask", "JobType", "systemflag", "adminhistory",
                              "applicationstate", "subsystem"}) {
        store.Execute("DROP TABLE IF EXISTS " + store.qualifier_ + table);
    }
    store.CreateTables();
    return store;
}

void TestStore::CreateTables() const {
    Collection options;
    for (const char* script : {"JobTablesDDL", "StandInTablesDDL"}) {
        for (const std::string& statement :
             ScriptStatements(StoreScriptLibrary().GetScript(options, provider_, qualifier_, script, true))) {
            Execute(statement);
        }
    }
}

void TestStore::Execute(const std::string& sql) const {
    OpenSession(connectionString_)->Execute(sql);
}

Value TestStore::Query(const std::string& sql) const {
    return OpenSession(connectionString_)->Query(sql);
}

}  // namespace kxjob::testing_support
