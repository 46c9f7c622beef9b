#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "kxjob/data_store_provider.h"

namespace kxjob::testing_support {

/// An empty store that lives as long as this object.
class ContractStore {
public:
    virtual ~ContractStore() = default;
    virtual std::string ConnectionString() const = 0;
};

/// One engine under the contracts of this folder.
struct ContractEngine {
    std::string name;
    DataStoreProvider provider = dspSqlite;
    std::function<std::unique_ptr<ContractStore>()> makeStore;
    /// What the database system calls itself.
    std::string engineName = {};
    /// The type of a column for texts of any length.
    std::string longText;
    /// What only servers have: the statements that tell a session's id, end the session of an id, keep a
    /// session busy for a minute, and count those that are kept busy.
    std::string sessionId = {};
    std::function<std::string(const std::string& id)> endSession = {};
    std::string beBusy = {};
    std::string countBusy = {};
    /// The name under which script/stores knows the server.
    std::string serverName = {};
    /// Why the engine cannot be had here, why doubles lose bits on their way, and why literals lose
    /// characters outside the Basic Multilingual Plane; empty when that is not so.
    std::string whyMissing = {};
    std::string whyDoublesLoseBits = {};
    std::string whyLiteralsLosePlanes = {};

    friend void PrintTo(const ContractEngine& engine, std::ostream* out) { *out << engine.name; }
};

/// A database of its own for each store on the server that KXJOB_POSTGRESQL names.
ContractEngine PostgreSqlServer();
/// The same for KXJOB_MARIADB.
ContractEngine MariaDbServer();

/// Those that keep a store in a file; each platform has its own.
std::vector<ContractEngine> FileEngines();
/// Those and the servers.
std::vector<ContractEngine> EveryEngine();

/// The name of a suite's instance.
std::string EngineName(const testing::TestParamInfo<ContractEngine>& info);

}  // namespace kxjob::testing_support
