#include <array>

#include "driver/bare_driver.h"
#include "driver/odbc_handles.h"

namespace kxjob::bench {
namespace {

class BareOdbc : public BareDriver {
public:
    explicit BareOdbc(const std::string& connectionString) : connection_(connectionString) {}

    std::vector<Cell> Run(const Statement& statement) override {
        const OdbcHandle<SQL_HANDLE_STMT> owner = connection_.NewStatement();
        SQLHANDLE handle = owner.get();
        SQLLEN length = 0;
        if (statement.boundText) {
            length = static_cast<SQLLEN>(statement.boundText->size());
            SQLBindParameter(handle, 1, SQL_PARAM_INPUT, SQL_C_CHAR, SQL_LONGVARCHAR,
                             statement.boundText->size() + 1, 0, OdbcBytes(*statement.boundText), length,
                             &length);
        }
        RequireOdbc(
            SQLExecDirect(handle, OdbcBytes(statement.sql), static_cast<SQLINTEGER>(statement.sql.size())),
            handle);
        return ReadRows(handle);
    }

private:
    std::vector<Cell> ReadRows(SQLHANDLE statement) {
        SQLSMALLINT columns = 0;
        SQLNumResultCols(statement, &columns);
        std::vector<Cell> cells;
        if (columns == 0) return cells;
        std::vector<SQLSMALLINT> types(static_cast<std::size_t>(columns));
        for (std::size_t column = 0; column < types.size(); ++column) {
            SQLDescribeCol(statement, static_cast<SQLUSMALLINT>(column + 1), nullptr, 0, nullptr,
                           &types[column], nullptr, nullptr, nullptr);
        }
        SQLRETURN result = SQLFetch(statement);
        for (; SQL_SUCCEEDED(result); result = SQLFetch(statement)) {
            for (std::size_t column = 0; column < types.size(); ++column) {
                cells.push_back(ReadCell(statement, static_cast<SQLUSMALLINT>(column + 1), types[column]));
            }
        }
        RequireOdbc(result, statement);
        return cells;
    }

    Cell ReadCell(SQLHANDLE statement, SQLUSMALLINT column, SQLSMALLINT type) {
        SQLLEN length = 0;
        switch (type) {
            case SQL_SMALLINT:
            case SQL_INTEGER:
            case SQL_BIGINT: {
                std::int64_t number = 0;
                RequireOdbc(SQLGetData(statement, column, SQL_C_SBIGINT, &number, sizeof number, &length),
                            statement);
                if (length == SQL_NULL_DATA) return {};
                return number;
            }
            case SQL_REAL:
            case SQL_FLOAT:
            case SQL_DOUBLE: {
                double number = 0;
                RequireOdbc(SQLGetData(statement, column, SQL_C_DOUBLE, &number, sizeof number, &length),
                            statement);
                if (length == SQL_NULL_DATA) return {};
                return number;
            }
            default: return ReadText(statement, column);
        }
    }

    Cell ReadText(SQLHANDLE statement, SQLUSMALLINT column) {
        SQLLEN length = 0;
        std::string text;
        while (true) {
            const SQLRETURN result = SQLGetData(statement, column, SQL_C_CHAR, buffer_.data(),
                                                static_cast<SQLLEN>(buffer_.size()), &length);
            RequireOdbc(result, statement);
            if (length == SQL_NULL_DATA) return {};
            if (result != SQL_SUCCESS_WITH_INFO) break;
            text.append(buffer_.data(), buffer_.size() - 1);
        }
        text.append(buffer_.data(), static_cast<std::size_t>(length));
        return text;
    }

    OdbcConnection connection_;
    std::array<char, 4096> buffer_{};
};

}  // namespace

std::unique_ptr<BareDriver> OpenBareOdbc(const std::string& connectionString) {
    return std::make_unique<BareOdbc>(connectionString);
}

}  // namespace kxjob::bench
