#pragma once

#include <string>

#include "kxjob/value.h"

namespace kxjob::testing_support {

/// A new SQLite file with the job tables and those of the stand-ins, reached through ODBC.
class TestStore {
public:
    /// `name` is that of the file; one that is there is replaced.
    explicit TestStore(const std::string& name);

    const std::string& ConnectionString() const { return connectionString_; }
    void Execute(const std::string& sql) const;
    /// Empty when there is no row.
    Value Query(const std::string& sql) const;

private:
    std::string connectionString_;
};

}  // namespace kxjob::testing_support
