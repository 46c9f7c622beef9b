#pragma once

#include <odbc_platform.h>

#include <memory>

namespace kxjob {

template <SQLSMALLINT type>
struct FreeOdbcHandle {
    void operator()(SQLHANDLE handle) const { SQLFreeHandle(type, handle); }
};

/// A driver does not let go of a connection whose transaction is open.
struct CloseOdbcConnection {
    void operator()(SQLHANDLE connection) const {
        if (!SQL_SUCCEEDED(SQLDisconnect(connection))) {
            SQLEndTran(SQL_HANDLE_DBC, connection, SQL_ROLLBACK);
            SQLDisconnect(connection);
        }
        SQLFreeHandle(SQL_HANDLE_DBC, connection);
    }
};

/// Freed when they go, which must be in this order: statements, connection, environment.
using OdbcEnvironment = std::unique_ptr<void, FreeOdbcHandle<SQL_HANDLE_ENV>>;
using OdbcConnectionHandle = std::unique_ptr<void, CloseOdbcConnection>;
using OdbcStatementHandle = std::unique_ptr<void, FreeOdbcHandle<SQL_HANDLE_STMT>>;

}  // namespace kxjob
