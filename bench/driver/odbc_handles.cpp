#include "driver/odbc_handles.h"

#include <array>
#include <stdexcept>

namespace kxjob::bench {
namespace {

[[noreturn]] void Fail(SQLSMALLINT type, SQLHANDLE handle) {
    std::array<SQLCHAR, 6> state{};
    std::array<SQLCHAR, 1024> message{};
    SQLGetDiagRec(type, handle, 1, state.data(), nullptr, message.data(), message.size(), nullptr);
    throw std::runtime_error(reinterpret_cast<const char*>(message.data()));
}

struct SetUp {
    const char* settings;   // in the connection string
    const char* statement;  // after connecting
};

/// What the connections of the library have in force, where it is not what driver and server begin with.
SetUp SetUpOf(const std::string& connectionString) {
    if (connectionString.find("PostgreSQL") != std::string::npos) {
        return {"LFConversion=0;KeepaliveTime=30;KeepaliveInterval=10;pqopt={tcp_user_timeout=120000};",
                "SET lock_timeout = 30000; SET client_min_messages = warning"};
    }
    return {
        "CONN_TIMEOUT=15;READ_TIMEOUT=300;WRITE_TIMEOUT=300;",
        "SET SESSION sql_mode='STRICT_ALL_TABLES,NO_ENGINE_SUBSTITUTION,NO_BACKSLASH_ESCAPES,ANSI_QUOTES', "
        "SESSION wsrep_sync_wait=3, SESSION tx_isolation='READ-COMMITTED'"};
}

}  // namespace

SQLCHAR* OdbcBytes(const std::string& text) {
    return const_cast<SQLCHAR*>(reinterpret_cast<const SQLCHAR*>(text.data()));
}

SQLPOINTER OdbcNumber(std::uintptr_t number) {
    return reinterpret_cast<SQLPOINTER>(number);
}

void RequireOdbc(SQLRETURN result, SQLHANDLE statement) {
    if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA) Fail(SQL_HANDLE_STMT, statement);
}

OdbcConnection::OdbcConnection(const std::string& connectionString) {
    SQLHANDLE handle = SQL_NULL_HANDLE;
    SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &handle);
    environment_.reset(handle);
    SQLSetEnvAttr(handle, SQL_ATTR_ODBC_VERSION, OdbcNumber(SQL_OV_ODBC3), 0);
    SQLAllocHandle(SQL_HANDLE_DBC, environment_.get(), &handle);
    connection_.reset(handle);
    const SetUp setUp = SetUpOf(connectionString);
    const std::string complete = connectionString + setUp.settings;
    const SQLRETURN result = SQLDriverConnect(handle, nullptr, OdbcBytes(complete), SQL_NTS, nullptr, 0,
                                              nullptr, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(result)) Fail(SQL_HANDLE_DBC, handle);
    const OdbcHandle<SQL_HANDLE_STMT> statement = NewStatement();
    RequireOdbc(SQLExecDirect(statement.get(), OdbcBytes(setUp.statement), SQL_NTS), statement.get());
}

OdbcHandle<SQL_HANDLE_STMT> OdbcConnection::NewStatement() const {
    SQLHANDLE handle = SQL_NULL_HANDLE;
    SQLAllocHandle(SQL_HANDLE_STMT, connection_.get(), &handle);
    return OdbcHandle<SQL_HANDLE_STMT>(handle);
}

}  // namespace kxjob::bench
