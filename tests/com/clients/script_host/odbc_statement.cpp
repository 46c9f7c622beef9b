#include "odbc_statement.h"

#include <sql.h>
#include <sqlext.h>

#include <array>
#include <stdexcept>

#include "com/handles/text.h"

namespace kxjob::script_host {
namespace {

/// Owns an ODBC handle; a connection is closed with it.
template <SQLSMALLINT kKind>
class Handle {
public:
    explicit Handle(SQLHANDLE parent) {
        if (!SQL_SUCCEEDED(SQLAllocHandle(kKind, parent, &handle_))) {
            throw std::runtime_error("no ODBC handle");
        }
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() {
        if (kKind == SQL_HANDLE_DBC) SQLDisconnect(handle_);
        SQLFreeHandle(kKind, handle_);
    }

    SQLHANDLE Get() const { return handle_; }

    void Require(SQLRETURN code) const {
        if (SQL_SUCCEEDED(code) || code == SQL_NO_DATA) return;
        std::array<SQLWCHAR, 6> state{};
        std::array<SQLWCHAR, 1024> text{};
        SQLGetDiagRecW(kKind, handle_, 1, state.data(), nullptr, text.data(),
                       static_cast<SQLSMALLINT>(text.size()), nullptr);
        throw std::runtime_error("[" + ToUtf8(std::wstring_view(state.data())) + "] " +
                                 ToUtf8(std::wstring_view(text.data())));
    }

private:
    SQLHANDLE handle_ = nullptr;
};

/// ODBC takes text to be read only through pointers that could write.
SQLWCHAR* TextForOdbc(const std::wstring& text) {
    return const_cast<SQLWCHAR*>(text.c_str());
}

Variant FirstCell(const Handle<SQL_HANDLE_STMT>& statement) {
    Variant cell;
    SQLSMALLINT columns = 0;
    statement.Require(SQLNumResultCols(statement.Get(), &columns));
    if (columns == 0 || SQLFetch(statement.Get()) == SQL_NO_DATA) return cell;
    std::array<SQLWCHAR, 4096> text{};
    SQLLEN length = 0;
    statement.Require(SQLGetData(statement.Get(), 1, SQL_C_WCHAR, text.data(), sizeof text, &length));
    if (length == SQL_NULL_DATA) {
        cell->vt = VT_NULL;
        return cell;
    }
    cell->vt = VT_BSTR;
    cell->bstrVal = Bstr(std::wstring_view(text.data())).Release();
    return cell;
}

}  // namespace

Variant RunStatement(const std::wstring& connectionString, const std::wstring& sql) {
    const Handle<SQL_HANDLE_ENV> environment(SQL_NULL_HANDLE);
    environment.Require(
        SQLSetEnvAttr(environment.Get(), SQL_ATTR_ODBC_VERSION, LongToPtr(SQL_OV_ODBC3), SQL_IS_INTEGER));
    const Handle<SQL_HANDLE_DBC> connection(environment.Get());
    connection.Require(SQLDriverConnectW(connection.Get(), nullptr, TextForOdbc(connectionString), SQL_NTS,
                                         nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT));
    const Handle<SQL_HANDLE_STMT> statement(connection.Get());
    statement.Require(SQLExecDirectW(statement.Get(), TextForOdbc(sql), SQL_NTS));
    return FirstCell(statement);
}

}  // namespace kxjob::script_host
