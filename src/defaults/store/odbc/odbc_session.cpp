#include "defaults/store/odbc/odbc_session.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>

#include "automation/letter_case.h"
#include "defaults/store/data_access_error.h"
#include "defaults/store/insert_rows.h"
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

AutomationError AtPlace(const AutomationError& error, std::size_t index, std::size_t count) {
    return {error.Number(), error.Source(), WithPlace(error.Description(), PlaceInBatch(index, count))};
}

/// Whether a transaction keeps back what the statement does. Others may commit by themselves.
bool CanBeUndone(std::string_view statement) {
    const std::string_view start =
        statement.substr(std::min(statement.find_first_not_of(" \t\r\n"), statement.size()));
    const std::string word = FoldedCase(start.substr(0, start.find_first_of(" \t\r\n")));
    return word == "insert" || word == "update" || word == "delete";
}

/// Whether another session was to blame: locks, a deadlock, a time limit.
bool IsPassing(const AutomationError& error) {
    const std::string_view state = StateOf(error);
    return state == "HYT00" || state == "40001" || state == "57014";
}

/// A prepared statement is started again later: nothing of its rows may stay behind.
struct CloseOdbcStatement {
    void operator()(OdbcStatement* statement) const noexcept { statement->Close(); }
};
using StartedStatement = std::unique_ptr<OdbcStatement, CloseOdbcStatement>;

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
            Run(std::string(statement));
        } catch (const AutomationError& error) {
            RaiseConnectionFailed("the session could not be set up: " + error.Description());
        }
    }
}

void OdbcSession::Execute(const std::string& sql) {
    if (const StartedStatement prepared(prepared_.Execute(sql)); prepared != nullptr) {
        prepared->Finish();
    } else {
        Run(sql);
    }
}

Value OdbcSession::Query(const std::string& sql) {
    if (const StartedStatement prepared(prepared_.Execute(sql)); prepared != nullptr) return prepared->Rows();
    OdbcStatement statement(connection_);
    statement.Execute(sql);
    return statement.Rows();
}

void OdbcSession::WriteLongText(const std::string& table, const std::string& keyColumn,
                                const std::string& keyValue, const std::string& valueColumn,
                                const std::string& value) {
    std::string sql = "UPDATE " + table + " SET " + valueColumn + " = ?";
    sql += " WHERE " + keyColumn + " = " + StandardSqlFormatter().FormatValue(keyValue);
    OdbcStatement statement(connection_);
    statement.ExecuteWithText(sql, value);
    statement.Finish();
}

void OdbcSession::RunBatch(std::span<const std::string> statements) {
    if (statements.empty()) return;
    if (!connection_.Engine().batch.joined) return RunOneByOne(statements);
    try {
        if (connection_.Engine().batch.rows) {
            RunJoined(WithRowsJoined(statements));
        } else {
            RunJoined(statements);
        }
    } catch (const AutomationError& error) {
        const std::optional<std::size_t> place = FailingPlace(statements, error);
        if (!place) throw;
        throw AtPlace(error, *place, statements.size());
    }
}

void OdbcSession::Run(const std::string& sql) {
    OdbcStatement statement(connection_);
    statement.Execute(sql);
    statement.Finish();
}

void OdbcSession::RunJoined(std::span<const std::string> statements) {
    const BatchForm& form = connection_.Engine().batch;
    if (!form.transaction && statements.size() == 1) return Execute(statements.front());
    if (!form.transaction) return Run(Joined(form, statements));
    Transaction transaction(connection_);
    Run(Joined(form, statements));
    transaction.Commit();
}

void OdbcSession::RunOneByOne(std::span<const std::string> statements) {
    Transaction transaction(connection_);
    for (std::size_t i = 0; i < statements.size(); ++i) {
        try {
            Run(statements[i]);
        } catch (const AutomationError& error) {
            throw AtPlace(error, i, statements.size());
        }
    }
    transaction.Commit();
}

std::optional<std::size_t> OdbcSession::FailingPlace(std::span<const std::string> statements,
                                                     const AutomationError& error) {
    if (IsLost() || IsPassing(error)) return std::nullopt;
    std::size_t place = 0;
    try {
        const Transaction undone(connection_);
        for (; place < statements.size() && CanBeUndone(statements[place]); ++place) {
            Run(statements[place]);
        }
    } catch (const AutomationError& again) {
        if (StateOf(again) == StateOf(error)) return place;
    }
    return std::nullopt;
}

}  // namespace kxjob
