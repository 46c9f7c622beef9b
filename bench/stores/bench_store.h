#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "driver/bare_driver.h"
#include "kxjob/store.h"
#include "stores/engine.h"

namespace kxjob::bench {

/// A store of its own with the library's tables, empty, and a bare connection to it: a SQLite file, or tables
/// with a qualifier of their own on a server. Gone when it goes.
class BenchStore {
public:
    explicit BenchStore(const Engine& engine);
    BenchStore(const BenchStore&) = delete;
    BenchStore& operator=(const BenchStore&) = delete;
    ~BenchStore();

    const Engine& On() const { return engine_; }
    const std::string& Connection() const { return connectionString_; }
    DataStoreProvider Provider() const { return engine_.provider; }
    const std::string& Qualifier() const { return qualifier_; }
    /// For files that go with the store.
    const std::filesystem::path& Folder() const { return folder_; }

    /// Where a SQLite store is.
    std::string File() const { return (folder_ / "bench.db").string(); }

    BareDriver& Driver() { return *driver_; }
    /// One more bare connection.
    std::unique_ptr<BareDriver> NewDriver() const;
    /// A statement, in which %q% stands for the qualifier.
    std::string Qualified(std::string sql) const;
    /// Runs such a statement on the bare connection, or on the connection that the library has on this
    /// thread.
    void RunBare(const std::string& sql) { driver_->Run(Qualified(sql)); }
    void RunByLibrary(const std::string& sql) { Library().Execute(Qualified(sql)); }
    Store Library() const { return {connectionString_, engine_.provider, qualifier_}; }

private:
    bool IsFile() const { return engine_.connectionString.empty(); }

    Engine engine_;
    std::filesystem::path folder_;
    std::string connectionString_;
    std::string qualifier_;
    std::unique_ptr<BareDriver> driver_;
};

}  // namespace kxjob::bench
