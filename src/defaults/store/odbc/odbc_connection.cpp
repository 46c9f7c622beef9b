#include "defaults/store/odbc/odbc_connection.h"

#include <cstdint>
#include <optional>
#include <vector>

#include "defaults/store/connection_string.h"
#include "defaults/store/data_access_error.h"
#include "defaults/store/odbc/text_calls.h"

namespace kxjob {
namespace {

/// In seconds. Locks are waited for half a minute; nothing that the library sends takes as long as this.
constexpr std::uintptr_t kLoginPatience = 15;
constexpr std::uintptr_t kStatementPatience = 300;

SQLPOINTER Number(std::uintptr_t number) {
    return reinterpret_cast<SQLPOINTER>(number);  // NOLINT(performance-no-int-to-ptr): how ODBC takes numbers
}

std::vector<Diagnostic> Diagnostics(SQLSMALLINT handleType, SQLHANDLE handle) {
    std::vector<Diagnostic> records;
    for (SQLSMALLINT number = 1;; ++number) {
        const std::optional<Diagnostic> record = DiagnosticRecord(handleType, handle, number);
        if (!record) return records;
        records.push_back(*record);
    }
}

/// Drivers have more of them than one: SSLPassword, ProxyPwd.
bool IsPassword(const std::string& key) {
    return key.ends_with("pwd") || key.ends_with("password");
}

std::string WithoutPasswords(std::string message, const std::string& connectionString) {
    constexpr std::string_view kBlot = "***";
    const ConnectionString connection(connectionString);
    for (const auto& [key, value] : connection.Entries()) {
        if (!IsPassword(key) || value.empty()) continue;
        for (std::size_t at = message.find(value); at != std::string::npos;
             at = message.find(value, at + kBlot.size())) {
            message.replace(at, value.size(), kBlot);
        }
    }
    return message;
}

OdbcEnvironment NewEnvironment() {
    SQLHANDLE environment = SQL_NULL_HANDLE;
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment))) {
        RaiseConnectionFailed("ODBC gives no environment");
    }
    SQLSetEnvAttr(environment, SQL_ATTR_ODBC_VERSION, Number(SQL_OV_ODBC3), 0);
    return OdbcEnvironment(environment);
}

OdbcConnectionHandle NewConnection(SQLHENV environment) {
    SQLHANDLE connection = SQL_NULL_HANDLE;
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_DBC, environment, &connection))) {
        RaiseConnectionFailed("ODBC gives no connection");
    }
    SQLSetConnectAttr(connection, SQL_ATTR_LOGIN_TIMEOUT, Number(kLoginPatience), 0);
    return OdbcConnectionHandle(connection);
}

SQLRETURN SetAutocommit(SQLHDBC connection, std::uintptr_t mode) {
    return SQLSetConnectAttr(connection, SQL_ATTR_AUTOCOMMIT, Number(mode), 0);
}

}  // namespace

OdbcConnection::OdbcConnection(const std::string& connectionString)
    : environment_(NewEnvironment()), connection_(NewConnection(environment_.get())) {
    if (!SQL_SUCCEEDED(Connect(connection_.get(), connectionString))) {
        const Diagnostic why = Decisive(Diagnostics(SQL_HANDLE_DBC, connection_.get()));
        RaiseConnectionFailed(WithoutPasswords(why.message, connectionString), why.state);
    }
    engine_ = &OdbcEngineNamed(EngineName());
}

std::string OdbcConnection::EngineName() const {
    return InfoText(connection_.get(), SQL_DBMS_NAME);
}

std::string OdbcConnection::EngineVersion() const {
    return InfoText(connection_.get(), SQL_DBMS_VER);
}

OdbcStatementHandle OdbcConnection::NewStatement() {
    SQLHANDLE statement = SQL_NULL_HANDLE;
    RequireDone(SQLAllocHandle(SQL_HANDLE_STMT, connection_.get(), &statement));
    OdbcStatementHandle owner(statement);
    // Drivers that do not know these say so, and are used without.
    SQLSetStmtAttr(statement, SQL_ATTR_NOSCAN, Number(SQL_NOSCAN_ON), 0);
    SQLSetStmtAttr(statement, SQL_ATTR_QUERY_TIMEOUT, Number(kStatementPatience), 0);
    return owner;
}

void OdbcConnection::BeginTransaction() {
    RequireDone(SetAutocommit(connection_.get(), SQL_AUTOCOMMIT_OFF));
}

void OdbcConnection::Commit() {
    RequireDone(SQLEndTran(SQL_HANDLE_DBC, connection_.get(), SQL_COMMIT));
}

void OdbcConnection::LeaveTransaction(bool committed) noexcept {
    if (lost_) return;
    const bool ended =
        committed || SQL_SUCCEEDED(SQLEndTran(SQL_HANDLE_DBC, connection_.get(), SQL_ROLLBACK));
    if (!ended || !SQL_SUCCEEDED(SetAutocommit(connection_.get(), SQL_AUTOCOMMIT_ON))) lost_ = true;
}

void OdbcConnection::RaiseFailed(SQLSMALLINT handleType, SQLHANDLE handle) {
    const std::vector<Diagnostic> records = Diagnostics(handleType, handle);
    const Diagnostic error = Decisive(records);
    const ErrorMeaning meaning = MeaningOf(error, *engine_);
    if (meaning.lost || IsDead()) lost_ = true;
    // Some drivers say no more than "error" when they find out before the statement goes.
    RaiseStatementFailed(lost_ && meaning.state == "HY000" ? "08S01" : meaning.state, error.message);
}

void OdbcConnection::RequireDone(SQLRETURN result) {
    if (!SQL_SUCCEEDED(result)) RaiseFailed(SQL_HANDLE_DBC, connection_.get());
}

bool OdbcConnection::IsDead() const {
    SQLUINTEGER dead = SQL_CD_FALSE;
    const SQLRETURN result =
        SQLGetConnectAttr(connection_.get(), SQL_ATTR_CONNECTION_DEAD, &dead, 0, nullptr);
    return SQL_SUCCEEDED(result) && dead == SQL_CD_TRUE;
}

}  // namespace kxjob
