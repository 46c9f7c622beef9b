#pragma once

#include <memory>
#include <string>
#include <unordered_set>

#include "defaults/store/kept_statements.h"
#include "defaults/store/odbc/odbc_statement.h"
#include "defaults/store/statement_shape.h"

namespace kxjob {

/// The statements of a session that came more than once, prepared by their shape: the server takes them apart
/// one time only. Those that cannot be prepared are remembered.
class OdbcPreparedStatements {
public:
    explicit OdbcPreparedStatements(OdbcConnection& connection) : connection_(connection) {}

    /// Starts a statement as a prepared one, which is good until the next is started. Null when it has to be
    /// sent as it stands; nothing has been done then. Not to be used within a transaction: there, what cannot
    /// be prepared may undo it.
    OdbcStatement* Execute(const std::string& sql);

private:
    bool IsOneToPrepare(const std::string& sql);
    std::unique_ptr<OdbcStatement> Prepared(const std::string& text);
    /// False when the server does not take it in this form.
    bool IsStarted(OdbcStatement& statement);

    OdbcConnection& connection_;
    StatementShape shape_;  // of the latest statement
    KeptStatements<std::unique_ptr<OdbcStatement>> kept_;
    std::unordered_set<std::string> cameOnce_;
    std::unordered_set<std::string> refused_;
};

}  // namespace kxjob
