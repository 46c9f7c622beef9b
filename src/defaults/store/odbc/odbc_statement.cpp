#include "defaults/store/odbc/odbc_statement.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>

#include "defaults/store/data_access_error.h"
#include "defaults/store/odbc/text_calls.h"
#include "kxjob/array.h"

namespace kxjob {
namespace {

using Unit = DriverText::value_type;

constexpr std::size_t kPiece = (std::size_t{64} << 10U) / sizeof(Unit);
constexpr std::size_t kFirstPiece = 4096;

void RequireSendable(const std::string& sql) {
    if (sql.find('\0') != std::string::npos) {
        RaiseStatementFailed("42000", "The statement holds a NUL character");
    }
    if (!std::in_range<SQLINTEGER>(sql.size())) RaiseStatementFailed("54000", "The statement is too long");
}

}  // namespace

OdbcStatement::OdbcStatement(OdbcConnection& connection)
    : connection_(connection), handle_(connection.NewStatement()), piece_(kFirstPiece) {}

void OdbcStatement::Execute(const std::string& sql) {
    RequireSendable(sql);
    Succeeded(ExecuteText(handle_.get(), sql));
}

void OdbcStatement::ExecuteWithText(const std::string& sql, const std::string& value) {
    RequireSendable(sql);
    const DriverText text = ToDriverText(value);
    const auto bytes = static_cast<SQLLEN>(text.size() * sizeof(Unit));
    SQLLEN inPieces = SQL_LEN_DATA_AT_EXEC(bytes);
    const SQLULEN columnSize = std::max<SQLULEN>(text.size(), 1);
    Unit token = 0;  // what the driver gives back when it asks for the text
    Succeeded(SQLBindParameter(handle_.get(), 1, SQL_PARAM_INPUT, kDriverText, connection_.Engine().longText,
                               columnSize, 0, &token, 0, &inPieces));
    SQLRETURN result = ExecuteText(handle_.get(), sql);
    if (result == SQL_NEED_DATA) {
        SQLPOINTER asked = nullptr;
        result = SQLParamData(handle_.get(), &asked);
        if (result == SQL_NEED_DATA) {
            SendPieces(text);
            result = SQLParamData(handle_.get(), &asked);
        }
    }
    Succeeded(result);
}

void OdbcStatement::Prepare(const std::string& sql) {
    RequireSendable(sql);
    Succeeded(PrepareText(handle_.get(), sql));
}

void OdbcStatement::Execute(std::span<const SqlLiteral> literals) {
    parameters_.resize(literals.size());
    for (std::size_t i = 0; i < literals.size(); ++i) {
        Bind(static_cast<SQLUSMALLINT>(i + 1), literals[i], parameters_[i]);
    }
    Succeeded(SQLExecute(handle_.get()));
}

void OdbcStatement::Finish() {
    while (Succeeded(SQLMoreResults(handle_.get()))) {
    }
}

Value OdbcStatement::Rows() {
    const std::vector<CellKind> kinds = DescribeColumns();
    if (kinds.empty() || !Fetch()) {
        Finish();
        return {};
    }
    RowArray rows(static_cast<std::int32_t>(kinds.size()));
    do {
        for (std::size_t column = 0; column < kinds.size(); ++column) {
            rows.AddCell(Cell(static_cast<SQLUSMALLINT>(column + 1), kinds[column]));
        }
    } while (Fetch());
    Finish();
    return rows;
}

void OdbcStatement::Bind(SQLUSMALLINT place, const SqlLiteral& literal, Parameter& parameter) {
    if (literal.isText) {
        parameter.text = ToDriverText(literal.text);
        parameter.length = static_cast<SQLLEN>(parameter.text.size() * sizeof(Unit));
        Succeeded(SQLBindParameter(handle_.get(), place, SQL_PARAM_INPUT, kDriverText, kDriverShortText,
                                   std::max<SQLULEN>(parameter.text.size(), 1), 0, parameter.text.data(),
                                   parameter.length, &parameter.length));
    } else {
        parameter.number = static_cast<SQLINTEGER>(literal.number);
        parameter.length = sizeof parameter.number;
        Succeeded(SQLBindParameter(handle_.get(), place, SQL_PARAM_INPUT, SQL_C_SLONG, SQL_INTEGER, 0, 0,
                                   &parameter.number, sizeof parameter.number, &parameter.length));
    }
}

void OdbcStatement::SendPieces(const DriverText& text) {
    std::basic_string_view<Unit> rest = text;
    do {
        const std::size_t length = WholeCharacters(rest, kPiece);
        Unit* const piece = const_cast<Unit*>(rest.data());  // NOLINT(cppcoreguidelines-pro-type-const-cast)
        Succeeded(SQLPutData(handle_.get(), piece, static_cast<SQLLEN>(length * sizeof(Unit))));
        rest.remove_prefix(length);
    } while (!rest.empty());
}

std::vector<CellKind> OdbcStatement::DescribeColumns() {
    SQLSMALLINT count = 0;
    Succeeded(SQLNumResultCols(handle_.get(), &count));
    std::vector<CellKind> kinds;
    for (SQLSMALLINT column = 1; column <= count; ++column) {
        SQLSMALLINT type = SQL_UNKNOWN_TYPE;
        SQLSMALLINT scale = 0;
        Succeeded(DescribeColumn(handle_.get(), static_cast<SQLUSMALLINT>(column), type, scale));
        kinds.push_back(CellKindOf(type, scale));
    }
    return kinds;
}

bool OdbcStatement::Fetch() {
    return Succeeded(SQLFetch(handle_.get()));
}

Value OdbcStatement::Cell(SQLUSMALLINT column, CellKind kind) {
    switch (kind) {
        case CellKind::kWholeNumber: return NumberCell<std::int64_t>(column, SQL_C_SBIGINT);
        case CellKind::kDouble: return NumberCell<double>(column, SQL_C_DOUBLE);
        default: return TextCell(column, kind);
    }
}

Value OdbcStatement::TextCell(SQLUSMALLINT column, CellKind kind) {
    DriverText text;
    SQLLEN left = 0;
    while (Succeeded(SQLGetData(handle_.get(), column, kDriverText, piece_.data(),
                                static_cast<SQLLEN>(piece_.size() * sizeof(Unit)), &left))) {
        if (left == SQL_NULL_DATA) return Null{};
        const std::size_t units = left < 0 ? piece_.size() : static_cast<std::size_t>(left) / sizeof(Unit);
        if (units < piece_.size()) {
            text.append(piece_.data(), units);
            break;
        }
        text.append(piece_.begin(), std::find(piece_.begin(), piece_.end() - 1, Unit{}));
        // Some drivers convert the whole text again for every piece: the rest comes in one.
        piece_.resize(units + 1);
    }
    if (kind == CellKind::kDigits) return DigitsCell(FromDriverText(text));
    return FromDriverText(text);
}

template <typename Number>
Value OdbcStatement::NumberCell(SQLUSMALLINT column, SQLSMALLINT type) {
    Number number{};
    SQLLEN length = 0;
    Succeeded(SQLGetData(handle_.get(), column, type, &number, sizeof number, &length));
    if (length == SQL_NULL_DATA) return Null{};
    if constexpr (std::is_same_v<Number, double>) {
        return number;
    } else {
        return WholeNumberCell(number);
    }
}

bool OdbcStatement::Succeeded(SQLRETURN result) {
    if (result == SQL_NO_DATA) return false;
    if (!SQL_SUCCEEDED(result)) connection_.RaiseFailed(SQL_HANDLE_STMT, handle_.get());
    return true;
}

}  // namespace kxjob
