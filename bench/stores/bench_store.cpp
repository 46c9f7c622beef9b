#include "stores/bench_store.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace kxjob::bench {
namespace {

constexpr std::array kTables = {"job",        "JobItem",      "jobtask",          "JobType",
                                "systemflag", "adminhistory", "applicationstate", "subsystem"};

std::filesystem::path NewFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "kxjob-bench-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::system_error(errno, std::generic_category());
    return pattern;
}

/// All of the same length, so that statements are equally long on every store.
std::string NextQualifier() {
    static int stores = 1000;
    return "b" + std::to_string(++stores) + "_";
}

}  // namespace

BenchStore::BenchStore(const Engine& engine)
    : engine_(engine),
      folder_(NewFolder()),
      connectionString_(IsFile() ? "Driver=SQLite;Database=" + File() : engine.connectionString),
      qualifier_(NextQualifier()) {
    Store store = Library();
    store.CreateDatabase();
    store.CreateTables();
    driver_ = NewDriver();
}

BenchStore::~BenchStore() {
    try {
        for (const char* table : kTables) {
            if (!IsFile()) driver_->Run("DROP TABLE IF EXISTS " + qualifier_ + table);
        }
    } catch (const std::exception&) {
        // The servers go with all that they keep.
    }
    driver_.reset();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

std::unique_ptr<BareDriver> BenchStore::NewDriver() const {
    return IsFile() ? OpenBareSqlite(File()) : OpenBareOdbc(connectionString_);
}

std::string BenchStore::Qualified(std::string sql) const {
    for (std::size_t at = sql.find("%q%"); at != std::string::npos; at = sql.find("%q%", at)) {
        sql.replace(at, 3, qualifier_);
    }
    return sql;
}

}  // namespace kxjob::bench
