#include <sql.h>
#include <sqlext.h>

#include <array>
#include <stdexcept>
#include <string_view>

#include "driver/bare_driver.h"

namespace kxjob::bench {
namespace {

template <SQLSMALLINT type>
struct Free {
    void operator()(SQLHANDLE handle) const {
        if constexpr (type == SQL_HANDLE_DBC) SQLDisconnect(handle);
        SQLFreeHandle(type, handle);
    }
};
template <SQLSMALLINT type>
using Handle = std::unique_ptr<void, Free<type>>;

SQLCHAR* Bytes(const std::string& text) {
    return const_cast<SQLCHAR*>(reinterpret_cast<const SQLCHAR*>(text.data()));
}

[[noreturn]] void Fail(SQLSMALLINT type, SQLHANDLE handle) {
    std::array<SQLCHAR, 6> state{};
    std::array<SQLCHAR, 1024> message{};
    SQLGetDiagRec(type, handle, 1, state.data(), nullptr, message.data(), message.size(), nullptr);
    throw std::runtime_error(reinterpret_cast<const char*>(message.data()));
}

/// What the sessions of the library have in force, where it is not what the server begins with.
const char* SetUpOf(std::string_view connectionString) {
    if (connectionString.find("PostgreSQL") != std::string_view::npos) {
        return "SET lock_timeout = 30000; SET client_min_messages = warning";
    }
    return "SET SESSION "
           "sql_mode='STRICT_ALL_TABLES,NO_ENGINE_SUBSTITUTION,NO_BACKSLASH_ESCAPES,ANSI_QUOTES', "
           "SESSION wsrep_sync_wait=3, SESSION tx_isolation='READ-COMMITTED'";
}

class BareOdbc : public BareDriver {
public:
    explicit BareOdbc(const std::string& connectionString) {
        SQLHANDLE handle = SQL_NULL_HANDLE;
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &handle);
        environment_.reset(handle);
        SQLSetEnvAttr(handle, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
        SQLAllocHandle(SQL_HANDLE_DBC, environment_.get(), &handle);
        connection_.reset(handle);
        const SQLRETURN result = SQLDriverConnect(handle, nullptr, Bytes(connectionString), SQL_NTS, nullptr,
                                                  0, nullptr, SQL_DRIVER_NOPROMPT);
        if (!SQL_SUCCEEDED(result)) Fail(SQL_HANDLE_DBC, handle);
        Run({SetUpOf(connectionString)});
    }

    std::vector<Cell> Run(const Statement& statement) override {
        SQLHANDLE handle = SQL_NULL_HANDLE;
        SQLAllocHandle(SQL_HANDLE_STMT, connection_.get(), &handle);
        const Handle<SQL_HANDLE_STMT> owner(handle);
        SQLLEN length = 0;
        if (statement.boundText) {
            length = static_cast<SQLLEN>(statement.boundText->size());
            SQLBindParameter(handle, 1, SQL_PARAM_INPUT, SQL_C_CHAR, SQL_LONGVARCHAR,
                             statement.boundText->size() + 1, 0, Bytes(*statement.boundText), length,
                             &length);
        }
        Require(SQLExecDirect(handle, Bytes(statement.sql), static_cast<SQLINTEGER>(statement.sql.size())),
                handle);
        return ReadRows(handle);
    }

private:
    static void Require(SQLRETURN result, SQLHANDLE statement) {
        if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA) Fail(SQL_HANDLE_STMT, statement);
    }

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
        Require(result, statement);
        return cells;
    }

    Cell ReadCell(SQLHANDLE statement, SQLUSMALLINT column, SQLSMALLINT type) {
        SQLLEN length = 0;
        switch (type) {
            case SQL_SMALLINT:
            case SQL_INTEGER:
            case SQL_BIGINT: {
                std::int64_t number = 0;
                Require(SQLGetData(statement, column, SQL_C_SBIGINT, &number, sizeof number, &length),
                        statement);
                if (length == SQL_NULL_DATA) return {};
                return number;
            }
            case SQL_REAL:
            case SQL_FLOAT:
            case SQL_DOUBLE: {
                double number = 0;
                Require(SQLGetData(statement, column, SQL_C_DOUBLE, &number, sizeof number, &length),
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
            Require(result, statement);
            if (length == SQL_NULL_DATA) return {};
            if (result != SQL_SUCCESS_WITH_INFO) break;
            text.append(buffer_.data(), buffer_.size() - 1);
        }
        text.append(buffer_.data(), static_cast<std::size_t>(length));
        return text;
    }

    Handle<SQL_HANDLE_ENV> environment_;
    Handle<SQL_HANDLE_DBC> connection_;
    std::array<char, 4096> buffer_{};
};

}  // namespace

std::unique_ptr<BareDriver> OpenBareOdbc(const std::string& connectionString) {
    return std::make_unique<BareOdbc>(connectionString);
}

}  // namespace kxjob::bench
