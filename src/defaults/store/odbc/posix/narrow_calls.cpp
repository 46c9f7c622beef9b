#include <algorithm>
#include <array>
#include <vector>

#include "defaults/store/odbc/text_calls.h"

namespace kxjob {
namespace {

/// ODBC declares texts that it only reads as texts that it may write to.
SQLCHAR* Bytes(const std::string& text) {
    return const_cast<SQLCHAR*>(  // NOLINT(cppcoreguidelines-pro-type-const-cast)
        reinterpret_cast<const SQLCHAR*>(text.data()));
}

std::string Text(const SQLCHAR* bytes, SQLSMALLINT length) {
    return {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length)};
}

}  // namespace

DriverText ToDriverText(std::string_view text) {
    return DriverText(text);
}

std::string FromDriverText(const DriverText& text) {
    return text;
}

std::size_t WholeCharacters(std::string_view text, std::size_t length) {
    if (text.size() <= length) return text.size();
    std::size_t end = length;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) --end;
    return end > 0 ? end : length;
}

SQLRETURN Connect(SQLHDBC connection, const std::string& connectionString) {
    return SQLDriverConnect(connection, nullptr, Bytes(connectionString), SQL_NTS, nullptr, 0, nullptr,
                            SQL_DRIVER_NOPROMPT);
}

SQLRETURN ExecuteText(SQLHSTMT statement, const std::string& sql) {
    return SQLExecDirect(statement, Bytes(sql), static_cast<SQLINTEGER>(sql.size()));
}

SQLRETURN PrepareText(SQLHSTMT statement, const std::string& sql) {
    return SQLPrepare(statement, Bytes(sql), static_cast<SQLINTEGER>(sql.size()));
}

std::string InfoText(SQLHDBC connection, SQLUSMALLINT what) {
    std::array<SQLCHAR, 256> text{};
    SQLSMALLINT length = 0;
    const SQLRETURN result = SQLGetInfo(connection, what, text.data(), text.size(), &length);
    if (!SQL_SUCCEEDED(result) || length < 0) return {};
    return Text(text.data(), std::min(length, static_cast<SQLSMALLINT>(text.size() - 1)));
}

std::optional<Diagnostic> DiagnosticRecord(SQLSMALLINT handleType, SQLHANDLE handle, SQLSMALLINT number) {
    std::array<SQLCHAR, SQL_SQLSTATE_SIZE + 1> state{};
    std::vector<SQLCHAR> message(4096);
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    const SQLRETURN result = SQLGetDiagRec(handleType, handle, number, state.data(), &native, message.data(),
                                           static_cast<SQLSMALLINT>(message.size()), &length);
    if (!SQL_SUCCEEDED(result)) return std::nullopt;
    const auto longest = static_cast<SQLSMALLINT>(message.size() - 1);
    return Diagnostic{Text(state.data(), SQL_SQLSTATE_SIZE), native,
                      Text(message.data(), std::clamp<SQLSMALLINT>(length, 0, longest))};
}

SQLRETURN DescribeColumn(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT& type, SQLSMALLINT& scale) {
    return SQLDescribeCol(statement, column, nullptr, 0, nullptr, &type, nullptr, &scale, nullptr);
}

}  // namespace kxjob
