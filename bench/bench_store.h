#pragma once

#include <sqlite3.h>

#include <filesystem>
#include <memory>
#include <string>

namespace kxjob::bench {

/// A SQLite file of its own with the library's tables, one job and one task, and a bare connection to it that
/// is set up as the library sets up its own.
class BenchStore {
public:
    BenchStore();
    BenchStore(const BenchStore&) = delete;
    BenchStore& operator=(const BenchStore&) = delete;
    ~BenchStore();

    const std::string& ConnectionString() const { return connectionString_; }
    /// Prepares, runs to the end and finalises one statement; gives the number of rows. Throws when it fails.
    std::size_t Run(const std::string& sql);

    static constexpr const char* kQualifier = "kx_";
    static constexpr const char* kJob = "{6F9619FF-8B86-4011-B42D-00C04FC964FF}";
    static constexpr const char* kTask = "{7F9619FF-8B86-4011-B42D-00C04FC964FF}";

private:
    std::filesystem::path folder_;
    std::string connectionString_;
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> database_{nullptr, &sqlite3_close};
};

}  // namespace kxjob::bench
