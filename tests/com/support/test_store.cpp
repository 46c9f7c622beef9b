#include "com/support/test_store.h"

#include <windows.h>

#include "defaults/store/create_database_file.h"
#include "defaults/store/open_session.h"
#include "defaults/store/script_library.h"
#include "defaults/store/script_statements.h"
#include "defaults/system/windows/wide_text.h"
#include "kxjob/collection.h"
#include "kxjob/data_store_provider.h"

namespace kxjob::testing_support {

TestStore::TestStore(const std::string& name) {
    const std::string path = std::string(KXJOB_TEST_STORES) + "/" + name;
    // The driver is the host's and takes its paths; Windows calls see them below drive Z.
    CreateDirectoryW(ToWide("Z:" KXJOB_TEST_STORES).c_str(), nullptr);
    for (const char* ending : {"", "-wal", "-shm"}) DeleteFileW(ToWide("Z:" + path + ending).c_str());
    connectionString_ = "Driver={SQLite3};Database=" + path + ";";
    CreateDatabaseFile(connectionString_);
    Collection options;
    for (const char* script : {"JobTablesDDL", "StandInTablesDDL"}) {
        for (const std::string& statement :
             ScriptStatements(StoreScriptLibrary().GetScript(options, dspSqlite, "", script, true))) {
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
