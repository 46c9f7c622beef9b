#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace kxjob::bench {

/// One statement as it goes to a driver. A text that is bound instead of written into it stands beside it.
struct Statement {
    std::string sql;
    std::optional<std::string> boundText = {};
};

using Cell = std::variant<std::monostate, std::int64_t, double, std::string>;

/// A connection by a driver's own functions, called as directly as a careful program would call them, and set
/// up as the library sets up its own. Each call is complete by itself. Throws std::runtime_error.
class BareDriver {
public:
    virtual ~BareDriver() = default;

    /// Runs one statement to its end and reads all rows: the cells, row after row.
    virtual std::vector<Cell> Run(const Statement& statement) = 0;
    void Run(const std::string& sql) { Run(Statement{sql}); }
};

std::unique_ptr<BareDriver> OpenBareSqlite(const std::string& file);
std::unique_ptr<BareDriver> OpenBareOdbc(const std::string& connectionString);

}  // namespace kxjob::bench
