#include <sqlite3.h>

#include <stdexcept>

#include "driver/bare_driver.h"

namespace kxjob::bench {
namespace {

struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
struct Close {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
};

Cell ReadCell(sqlite3_stmt* statement, int column) {
    switch (sqlite3_column_type(statement, column)) {
        case SQLITE_NULL: return {};
        case SQLITE_INTEGER: return std::int64_t{sqlite3_column_int64(statement, column)};
        case SQLITE_FLOAT: return sqlite3_column_double(statement, column);
        default: {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
            return std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(statement, column)));
        }
    }
}

class BareSqlite : public BareDriver {
public:
    explicit BareSqlite(const std::string& file) {
        sqlite3* opened = nullptr;
        const int result =
            sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
        database_.reset(opened);
        Require(result == SQLITE_OK);
        sqlite3_busy_timeout(opened, 30'000);
        Run({"PRAGMA journal_mode=WAL"});
        Run({"PRAGMA synchronous=NORMAL"});
    }

    std::vector<Cell> Run(const Statement& statement) override {
        sqlite3_stmt* compiled = nullptr;
        const int length = static_cast<int>(statement.sql.size() + 1);
        Require(sqlite3_prepare_v2(database_.get(), statement.sql.c_str(), length, &compiled, nullptr) ==
                SQLITE_OK);
        const std::unique_ptr<sqlite3_stmt, Finalize> owner(compiled);
        if (statement.boundText) {
            sqlite3_bind_text64(compiled, 1, statement.boundText->data(), statement.boundText->size(),
                                SQLITE_STATIC, SQLITE_UTF8);
        }
        std::vector<Cell> cells;
        const int columns = sqlite3_column_count(compiled);
        int result = sqlite3_step(compiled);
        for (; result == SQLITE_ROW; result = sqlite3_step(compiled)) {
            for (int column = 0; column < columns; ++column) cells.push_back(ReadCell(compiled, column));
        }
        Require(result == SQLITE_DONE);
        return cells;
    }

private:
    void Require(bool done) const {
        if (!done) throw std::runtime_error(sqlite3_errmsg(database_.get()));
    }

    std::unique_ptr<sqlite3, Close> database_;
};

}  // namespace

std::unique_ptr<BareDriver> OpenBareSqlite(const std::string& file) {
    return std::make_unique<BareSqlite>(file);
}

}  // namespace kxjob::bench
