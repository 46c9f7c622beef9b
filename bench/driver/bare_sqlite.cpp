#include "driver/bare_driver.h"
#include "driver/sqlite_handles.h"

namespace kxjob::bench {
namespace {

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
    explicit BareSqlite(const std::string& file) : database_(OpenSqlite(file)) {}

    std::vector<Cell> Run(const Statement& statement) override {
        const SqliteStatement compiled = Compiled(database_.get(), statement.sql);
        if (statement.boundText) {
            sqlite3_bind_text64(compiled.get(), 1, statement.boundText->data(), statement.boundText->size(),
                                SQLITE_STATIC, SQLITE_UTF8);
        }
        std::vector<Cell> cells;
        const int columns = sqlite3_column_count(compiled.get());
        int result = sqlite3_step(compiled.get());
        for (; result == SQLITE_ROW; result = sqlite3_step(compiled.get())) {
            for (int column = 0; column < columns; ++column) {
                cells.push_back(ReadCell(compiled.get(), column));
            }
        }
        RequireSqlite(database_.get(), result == SQLITE_DONE);
        return cells;
    }

private:
    SqliteDatabase database_;
};

}  // namespace

std::unique_ptr<BareDriver> OpenBareSqlite(const std::string& file) {
    return std::make_unique<BareSqlite>(file);
}

}  // namespace kxjob::bench
