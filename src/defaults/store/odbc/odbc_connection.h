#pragma once

#include <string>

#include "defaults/store/odbc/odbc_engine.h"
#include "defaults/store/odbc/odbc_handles.h"

namespace kxjob {

/// A connection to the store behind an ODBC driver. Once an error has shown that it is lost, nothing is sent
/// on it any more.
class OdbcConnection {
public:
    /// Raises 0x80040000 + 704 with the driver's reason, in which the passwords of the connection string are
    /// blotted out.
    explicit OdbcConnection(const std::string& connectionString);

    const OdbcEngine& Engine() const { return *engine_; }
    /// What the driver says.
    std::string EngineName() const;
    std::string EngineVersion() const;
    bool IsLost() const { return lost_; }

    OdbcStatementHandle NewStatement();
    /// From here on statements add up to a transaction.
    void BeginTransaction();
    void Commit();
    /// Goes back to autocommit, undoing first what is not committed. The connection is lost when that fails.
    void LeaveTransaction(bool committed) noexcept;
    /// Raises 0x80040000 + 703 with what the driver says about the call on `handle` that failed just now.
    [[noreturn]] void RaiseFailed(SQLSMALLINT handleType, SQLHANDLE handle);

private:
    void RequireDone(SQLRETURN result);
    bool IsDead() const;

    OdbcEnvironment environment_;
    OdbcConnectionHandle connection_;
    const OdbcEngine* engine_ = nullptr;
    bool lost_ = false;
};

}  // namespace kxjob
