#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "defaults/store/odbc/odbc_connection.h"
#include "defaults/store/odbc/odbc_prepared_statements.h"
#include "defaults/store/session.h"
#include "kxjob/automation_error.h"

namespace kxjob {

/// A session on the store behind an ODBC driver. Where the engine prepares, single statements that come again
/// are prepared by their shape; a batch is sent as it stands. What is peculiar to the database system comes
/// from its entry in odbc_engine.h.
class OdbcSession : public Session {
public:
    /// `connectionString` is in ODBC's own keywords. Raises 0x80040000 + 704 when it cannot connect, or
    /// cannot set the session up.
    explicit OdbcSession(const std::string& connectionString);

    void Execute(const std::string& sql) override;
    Value Query(const std::string& sql) override;
    void WriteLongText(const std::string& table, const std::string& keyColumn, const std::string& keyValue,
                       const std::string& valueColumn, const std::string& value) override;
    /// Where a batch is one exchange, the place of the failing statement is found afterwards, by running them
    /// one by one in a transaction that is undone.
    void RunBatch(std::span<const std::string> statements) override;
    std::string EngineName() override { return connection_.EngineName(); }
    std::string EngineVersion() override { return connection_.EngineVersion(); }
    std::string NowQuery() const override { return std::string(connection_.Engine().nowQuery); }
    bool IsLost() const override { return connection_.IsLost(); }

private:
    class Transaction;

    /// Runs what the text holds to its end, as it stands.
    void Run(const std::string& sql);
    void RunJoined(std::span<const std::string> statements);
    void RunOneByOne(std::span<const std::string> statements);
    /// Which statement of a batch that is undone raises `error`, where one does when they run by themselves.
    std::optional<std::size_t> FailingPlace(std::span<const std::string> statements,
                                            const AutomationError& error);

    OdbcConnection connection_;
    OdbcPreparedStatements prepared_{connection_};
};

}  // namespace kxjob
