#pragma once

#include <string>
#include <vector>

#include "defaults/store/odbc/odbc_cell.h"
#include "defaults/store/odbc/odbc_connection.h"
#include "kxjob/value.h"

namespace kxjob {

/// One call on a connection: a statement handle is used once, for some drivers keep what a lost connection
/// left in it. Failures are raised by the connection.
class OdbcStatement {
public:
    explicit OdbcStatement(OdbcConnection& connection);

    /// Runs all that the text holds to its end.
    void Run(const std::string& sql);
    /// Runs a statement with one question mark, for which `value` goes to the driver in pieces.
    void RunWithText(const std::string& sql, const std::string& value);
    /// Runs a SELECT; Empty when there is no row.
    Value Rows(const std::string& sql);

private:
    void Start(const std::string& sql);
    /// A fault behind the first statement shows only when its results are asked for.
    void Drain();
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
};

}  // namespace kxjob
