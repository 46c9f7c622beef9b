#pragma once

#include <span>
#include <string>
#include <vector>

#include "defaults/store/odbc/odbc_cell.h"
#include "defaults/store/odbc/odbc_connection.h"
#include "defaults/store/statement_shape.h"
#include "kxjob/value.h"

namespace kxjob {

/// A statement on a connection: started in one of four ways, and then read to its end. Failures are raised by
/// the connection.
class OdbcStatement {
public:
    explicit OdbcStatement(OdbcConnection& connection);

    /// Starts all that the text holds.
    void Execute(const std::string& sql);
    /// Starts a statement with one question mark, for which `value` goes to the driver in pieces.
    void ExecuteWithText(const std::string& sql, const std::string& value);
    /// Takes a statement with question marks, to be started as often as needed.
    void Prepare(const std::string& sql);
    /// Starts the prepared statement; the literals take the places of its question marks. Numbers must have
    /// 32 bits.
    void Execute(std::span<const SqlLiteral> literals);

    /// Runs to the end: a fault behind the first statement shows only when its results are asked for.
    void Finish();
    /// Runs to the end, and gives the rows of a SELECT; Empty when there is none.
    Value Rows();
    /// Lets go of what the driver still holds of the rows.
    void Close() noexcept { SQLFreeStmt(handle_.get(), SQL_CLOSE); }

private:
    /// What a driver reads while a prepared statement starts.
    struct Parameter {
        DriverText text;
        SQLINTEGER number = 0;
        SQLLEN length = 0;
    };

    void Bind(SQLUSMALLINT place, const SqlLiteral& literal, Parameter& parameter);
    void SendPieces(const DriverText& text);
    std::vector<CellKind> DescribeColumns();
    bool Fetch();
    Value Cell(SQLUSMALLINT column, CellKind kind);
    Value TextCell(SQLUSMALLINT column, CellKind kind);
    template <typename Number>
    Value NumberCell(SQLUSMALLINT column, SQLSMALLINT type);
    /// Whether there is something: false for SQL_NO_DATA; raises for anything but that and success.
    bool Succeeded(SQLRETURN result);

    OdbcConnection& connection_;
    OdbcStatementHandle handle_;
    std::vector<DriverText::value_type> piece_;  // of a text that is being read
    std::vector<Parameter> parameters_;
};

}  // namespace kxjob
