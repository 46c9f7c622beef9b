#include <algorithm>
#include <array>
#include <vector>

#include "defaults/store/odbc/text_calls.h"
#include "defaults/system/windows/wide_text.h"

namespace kxjob {
namespace {

/// ODBC declares texts that it only reads as texts that it may write to.
SQLWCHAR* Units(const DriverText& text) {
    return const_cast<SQLWCHAR*>(text.data());  // NOLINT(cppcoreguidelines-pro-type-const-cast)
}

std::string Text(const SQLWCHAR* units, SQLSMALLINT length) {
    return FromDriverText(DriverText(units, static_cast<std::size_t>(length)));
}

bool IsSecondOfPair(wchar_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

}  // namespace

DriverText ToDriverText(std::string_view text) {
    return ToWide(text);
}

std::string FromDriverText(const DriverText& text) {
    return ToUtf8(text);
}

std::size_t WholeCharacters(std::wstring_view text, std::size_t length) {
    if (text.size() <= length) return text.size();
    return length > 1 && IsSecondOfPair(text[length]) ? length - 1 : length;
}

SQLRETURN Connect(SQLHDBC connection, const std::string& connectionString) {
    const DriverText text = ToDriverText(connectionString);
    return SQLDriverConnectW(connection, nullptr, Units(text), SQL_NTS, nullptr, 0, nullptr,
                             SQL_DRIVER_NOPROMPT);
}

SQLRETURN ExecuteText(SQLHSTMT statement, const std::string& sql) {
    const DriverText text = ToDriverText(sql);
    return SQLExecDirectW(statement, Units(text), static_cast<SQLINTEGER>(text.size()));
}

SQLRETURN PrepareText(SQLHSTMT statement, const std::string& sql) {
    const DriverText text = ToDriverText(sql);
    return SQLPrepareW(statement, Units(text), static_cast<SQLINTEGER>(text.size()));
}

std::string InfoText(SQLHDBC connection, SQLUSMALLINT what) {
    std::array<SQLWCHAR, 256> text{};
    SQLSMALLINT bytes = 0;  // this call alone counts bytes
    const SQLRETURN result =
        SQLGetInfoW(connection, what, text.data(), static_cast<SQLSMALLINT>(sizeof text), &bytes);
    if (!SQL_SUCCEEDED(result) || bytes < 0) return {};
    const auto length = static_cast<SQLSMALLINT>(static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR));
    return Text(text.data(), std::min(length, static_cast<SQLSMALLINT>(text.size() - 1)));
}

std::optional<Diagnostic> DiagnosticRecord(SQLSMALLINT handleType, SQLHANDLE handle, SQLSMALLINT number) {
    std::array<SQLWCHAR, SQL_SQLSTATE_SIZE + 1> state{};
    std::vector<SQLWCHAR> message(4096);
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    const SQLRETURN result = SQLGetDiagRecW(handleType, handle, number, state.data(), &native, message.data(),
                                            static_cast<SQLSMALLINT>(message.size()), &length);
    if (!SQL_SUCCEEDED(result)) return std::nullopt;
    const auto longest = static_cast<SQLSMALLINT>(message.size() - 1);
    return Diagnostic{Text(state.data(), SQL_SQLSTATE_SIZE), native,
                      Text(message.data(), std::clamp<SQLSMALLINT>(length, 0, longest))};
}

SQLRETURN DescribeColumn(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT& type, SQLSMALLINT& scale) {
    std::array<SQLWCHAR, 256> name{};  // a driver fails without a place for it
    SQLSMALLINT length = 0;
    return SQLDescribeColW(statement, column, name.data(), static_cast<SQLSMALLINT>(name.size()), &length,
                           &type, nullptr, &scale, nullptr);
}

}  // namespace kxjob
