#include "support/fuzz_store.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>

#include "kxjob/data_store_provider.h"
#include "kxjob/store.h"
#include "support/fuzz_input.h"

namespace kxjob::fuzz {
namespace {

sqlite3*& LatestOpened() {
    static sqlite3* database = nullptr;
    return database;
}

int Remember(sqlite3* database, const char** /*message*/, const sqlite3_api_routines* /*unused*/) {
    LatestOpened() = database;
    return SQLITE_OK;
}

/// Gone at the end of the program.
const std::filesystem::path& Folder() {
    struct Temporary {
        Temporary() {
            std::string name = std::filesystem::temp_directory_path() / "kxjob-fuzz-XXXXXX";
            Require(mkdtemp(name.data()) != nullptr, "a temporary folder can be made");
            path = name;
        }
        ~Temporary() {
            std::error_code ignored;
            std::filesystem::remove_all(path, ignored);
        }
        std::filesystem::path path;
    };
    static const Temporary folder;
    return folder.path;
}

using Statement = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;

}  // namespace

const std::vector<std::string>& TableNames() {
    static const std::vector<std::string> names = {
        "job",        "JobItem",      "jobtask",          "JobType",
        "systemflag", "adminhistory", "applicationstate", "subsystem"};
    return names;
}

FuzzStore& FuzzStore::Instance() {
    static FuzzStore store;
    return store;
}

FuzzStore::FuzzStore() : connectionString_("Driver=SQLite;Database=" + (Folder() / "store.db").string()) {
    const std::string configuration = Folder() / "kxjob.conf";
    std::ofstream(configuration) << "log.level = 0\n";
    setenv("KXJOB_CONFIG", configuration.c_str(), 1);
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(&Remember));
    kxjob::Store store(connectionString_, dspSqlite, "kx_");
    store.CreateDatabase();
    store.CreateTables();
    database_ = LatestOpened();
    Run("PRAGMA synchronous=OFF");
}

void FuzzStore::Clear() {
    for (const std::string& table : TableNames()) {
        Require(Run("DELETE FROM kx_" + table), "the tables are there, and nothing is left open");
    }
}

void FuzzStore::Insert(const std::string& table, const Cells& cells) {
    std::string columns;
    std::string places;
    for (const auto& [column, text] : cells) {
        columns += (columns.empty() ? "" : ", ") + column;
        places += places.empty() ? "?" : ", ?";
    }
    const std::string sql = "INSERT INTO kx_" + table + " (" + columns + ") VALUES (" + places + ")";
    sqlite3_stmt* prepared = nullptr;
    Require(sqlite3_prepare_v2(database_, sql.c_str(), -1, &prepared, nullptr) == SQLITE_OK,
            sqlite3_errmsg(database_));
    const Statement statement(prepared, sqlite3_finalize);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        sqlite3_bind_text(prepared, static_cast<int>(i) + 1, cells[i].second.data(),
                          static_cast<int>(cells[i].second.size()), SQLITE_STATIC);
    }
    Require(sqlite3_step(prepared) == SQLITE_DONE, sqlite3_errmsg(database_));
}

bool FuzzStore::Run(const std::string& sql) {
    return sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

}  // namespace kxjob::fuzz
