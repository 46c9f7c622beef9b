#include "defaults/store/odbc/odbc_session.h"

#include <cstddef>
#include <string_view>

#include "defaults/store/data_access_error.h"
#include "defaults/store/odbc/odbc_statement.h"
#include "defaults/text/standard_sql_formatter.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

std::string Joined(const BatchForm& form, std::span<const std::string> statements) {
    std::string joined(form.before);
    for (const std::string& statement : statements) {
        if (&statement != &statements.front()) joined += form.between;
        joined += statement;
    }
    return joined.append(form.after);
}

}  // namespace

/// Undone unless it was committed.
class OdbcSession::Transaction {
public:
    explicit Transaction(OdbcConnection& connection) : connection_(connection) {
        connection_.BeginTransaction();
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction() { connection_.LeaveTransaction(committed_); }

    void Commit() {
        connection_.Commit();
        committed_ = true;
    }

private:
    OdbcConnection& connection_;
    bool committed_ = false;
};

OdbcSession::OdbcSession(const std::string& connectionString) : connection_(connectionString) {
    for (const std::string_view statement : connection_.Engine().setUp) {
        try {
            OdbcStatement(connection_).Run(std::string(statement));
        } catch (const AutomationError& error) {
            RaiseConnectionFailed("the session could not be set up: " + error.Description());
        }
    }
}

void OdbcSession::Execute(const std::string& sql) {
    OdbcStatement(connection_).Run(sql);
}

Value OdbcSession::Query(const std::string& sql) {
    return OdbcStatement(connection_).Rows(sql);
}

void OdbcSession::WriteLongText(const std::string& table, const std::string& keyColumn,
                                const std::string& keyValue, const std::string& valueColumn,
                                const std::string& value) {
    std::string sql = "UPDATE " + table + " SET " + valueColumn + " = ?";
    sql += " WHERE " + keyColumn + " = " + StandardSqlFormatter().FormatValue(keyValue);
    OdbcStatement(connection_).RunWithText(sql, value);
}

void OdbcSession::RunBatch(std::span<const std::string> statements) {
    if (statements.empty()) return;
    const BatchForm& form = connection_.Engine().batch;
    if (!form.transaction) return Execute(Joined(form, statements));
    Transaction transaction(connection_);
    if (form.joined) {
        Execute(Joined(form, statements));
    } else {
        RunOneByOne(statements);
    }
    transaction.Commit();
}

void OdbcSession::RunOneByOne(std::span<const std::string> statements) {
    for (std::size_t i = 0; i < statements.size(); ++i) {
        try {
            Execute(statements[i]);
        } catch (const AutomationError& error) {
            throw AutomationError(error.Number(), error.Source(),
                                  WithPlace(error.Description(), PlaceInBatch(i, statements.size())));
        }
    }
}

}  // namespace kxjob
