#include "bench_store.h"

#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <system_error>

#include "kxjob/store.h"

namespace kxjob::bench {

BenchStore::BenchStore() {
    std::string pattern = (std::filesystem::temp_directory_path() / "kxjob-bench-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::system_error(errno, std::generic_category());
    folder_ = pattern;
    const std::string file = (folder_ / "bench.db").string();
    connectionString_ = "Driver=SQLite;Database=" + file;
    Store store(connectionString_, dspSqlite, kQualifier);
    store.CreateDatabase();
    store.CreateTables();

    sqlite3* opened = nullptr;
    const int result =
        sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    database_.reset(opened);
    if (result != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(opened));
    sqlite3_busy_timeout(opened, 30'000);
    Run("PRAGMA journal_mode=WAL");
    Run("PRAGMA synchronous=NORMAL");
    Run(std::string("INSERT INTO kx_job (jobguid, jobtypeid, jobstateid) VALUES ('") + kJob +
        "', 'T', 'RUNNING')");
    Run(std::string("INSERT INTO kx_jobtask (jobtaskguid, jobguid, jobtaskstateid) VALUES ('") + kTask +
        "', '" + kJob + "', 'RUNNING')");
}

BenchStore::~BenchStore() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

std::size_t BenchStore::Run(const std::string& sql) {
    sqlite3_stmt* prepared = nullptr;
    sqlite3_prepare_v2(database_.get(), sql.c_str(), static_cast<int>(sql.size() + 1), &prepared, nullptr);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(prepared, &sqlite3_finalize);
    std::size_t rows = 0;
    int result = prepared == nullptr ? SQLITE_ERROR : sqlite3_step(prepared);
    for (; result == SQLITE_ROW; result = sqlite3_step(prepared)) ++rows;
    if (result != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(database_.get()));
    return rows;
}

}  // namespace kxjob::bench
