#pragma once

#include <string>

#include "kxjob/data_store_provider.h"
#include "kxjob/value.h"

namespace kxjob::testing_support {

/// A store with empty job tables and those of the stand-ins, reached through ODBC.
class TestStore {
public:
    /// A new SQLite file of this name; one that is there is replaced.
    static TestStore InFile(const std::string& name);
    /// The connection string of such a file, without any table.
    static std::string NewFile(const std::string& name);
    /// The database of a server that a connection string names; its tables are replaced. `qualifier` is the
    /// schema in which they are.
    static TestStore OnServer(std::string connectionString, DataStoreProvider provider,
                              std::string qualifier);

    const std::string& ConnectionString() const { return connectionString_; }
    DataStoreProvider Provider() const { return provider_; }
    /// Names the schema of the tables, where statements without it find them too.
    const std::string& Qualifier() const { return qualifier_; }
    void Execute(const std::string& sql) const;
    /// Empty when there is no row.
    Value Query(const std::string& sql) const;

private:
    TestStore(std::string connectionString, DataStoreProvider provider, std::string qualifier);
    void CreateTables() const;

    std::string connectionString_;
    DataStoreProvider provider_;
    std::string qualifier_;
};

}  // namespace kxjob::testing_support
