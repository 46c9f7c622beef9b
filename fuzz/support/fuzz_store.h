#pragma once

#include <sqlite3.h>

#include <string>
#include <utility>
#include <vector>

namespace kxjob::fuzz {

/// A column and the text that goes into it.
using Cells = std::vector<std::pair<std::string, std::string>>;

/// A SQLite store in a temporary file, with the tables of the qualifier "kx_", that the library opens by
/// itself; and the library's own connection to it, for looking on and for rows that no literal has made.
class FuzzStore {
public:
    /// There is one in a program.
    static FuzzStore& Instance();

    const std::string& ConnectionString() const { return connectionString_; }
    sqlite3* Database() const { return database_; }

    /// Empties all tables of "kx_".
    void Clear();
    /// Puts a row into a table of "kx_", its texts bound.
    void Insert(const std::string& table, const Cells& cells);
    /// Runs a statement of the target's own; whether it could be run.
    bool Run(const std::string& sql);

private:
    FuzzStore();

    std::string connectionString_;
    sqlite3* database_ = nullptr;
};

/// The tables that the library's methods and its stand-ins use.
const std::vector<std::string>& TableNames();

}  // namespace kxjob::fuzz
