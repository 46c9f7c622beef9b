#pragma once

#include <sql.h>
#include <sqlext.h>

#include <memory>
#include <string>

namespace kxjob::bench {

template <SQLSMALLINT type>
struct FreeOdbc {
    void operator()(SQLHANDLE handle) const {
        if constexpr (type == SQL_HANDLE_DBC) SQLDisconnect(handle);
        SQLFreeHandle(type, handle);
    }
};
template <SQLSMALLINT type>
using OdbcHandle = std::unique_ptr<void, FreeOdbc<type>>;

/// A connection that is set up as the library sets up its own. Throws std::runtime_error, as do the others.
class OdbcConnection {
public:
    explicit OdbcConnection(const std::string& connectionString);

    SQLHANDLE Get() const { return connection_.get(); }
    OdbcHandle<SQL_HANDLE_STMT> NewStatement() const;

private:
    OdbcHandle<SQL_HANDLE_ENV> environment_;
    OdbcHandle<SQL_HANDLE_DBC> connection_;
};

SQLCHAR* OdbcBytes(const std::string& text);
SQLPOINTER OdbcNumber(std::uintptr_t number);
void RequireOdbc(SQLRETURN result, SQLHANDLE statement);

}  // namespace kxjob::bench
