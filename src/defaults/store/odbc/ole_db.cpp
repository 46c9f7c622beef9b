#include "defaults/store/odbc/ole_db.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <utility>

#include "automation/letter_case.h"
#include "defaults/store/data_access_error.h"
#include "defaults/store/odbc/sql_server_driver.h"

namespace kxjob {
namespace {

using std::string_view;
using Names = std::pair<string_view, string_view>;  // OLE DB's in lower case, ODBC's (empty: none)

constexpr std::array kSqlServerNames = {
    Names{"provider", ""},
    Names{"driver", ""},
    Names{"data source", "Server"},
    Names{"server", "Server"},
    Names{"address", "Server"},
    Names{"addr", "Server"},
    Names{"network address", "Server"},
    Names{"initial catalog", "Database"},
    Names{"database", "Database"},
    Names{"user id", "UID"},
    Names{"uid", "UID"},
    Names{"user", "UID"},
    Names{"password", "PWD"},
    Names{"pwd", "PWD"},
    Names{"application name", "APP"},
    Names{"workstation id", "WSID"},
    Names{"current language", "Language"},
    Names{"use encryption for data", "Encrypt"},
    Names{"trust server certificate", "TrustServerCertificate"},
    Names{"application intent", "ApplicationIntent"},
    Names{"mars connection", "MARS_Connection"},
    Names{"failover partner", "Failover_Partner"},
    Names{"server spn", "ServerSPN"},
    Names{"persist security info", ""},
    Names{"connect timeout", ""},
    Names{"packet size", ""},
    Names{"auto translate", ""},
    Names{"use procedure for prepare", ""},
    Names{"tag with column collation when possible", ""},
    Names{"datatypecompatibility", ""},
    Names{"locale identifier", ""},
    Names{"ole db services", ""},
    Names{"general timeout", ""},
    Names{"prompt", ""},
};

constexpr std::array kOdbcProviderNames = {
    Names{"provider", ""},
    Names{"data source", "DSN"},
    Names{"initial catalog", "Database"},
    Names{"user id", "UID"},
    Names{"password", "PWD"},
    Names{"persist security info", ""},
    Names{"connect timeout", ""},
    Names{"locale identifier", ""},
    Names{"ole db services", ""},
    Names{"prompt", ""},
    Names{"mode", ""},
};

string_view OdbcName(std::span<const Names> names, string_view key) {
    const auto known = std::find_if(names.begin(), names.end(),
                                    [&](const Names& candidate) { return candidate.first == key; });
    return known == names.end() ? key : known->second;
}

std::string InBraces(string_view value) {
    std::string enclosed = "{";
    for (const char character : value) {
        if (character == '}') enclosed += '}';
        enclosed += character;
    }
    return enclosed + '}';
}

/// Drivers differ in what they take without braces; some take no braces where none are needed.
std::string ValueText(string_view value) {
    const bool isPlain = value.find_first_of("[]{}(),;?*=!@\"'") == string_view::npos &&
                         !value.starts_with(' ') && !value.ends_with(' ');
    return isPlain ? std::string(value) : InBraces(value);
}

std::string Entry(string_view key, string_view value) {
    return std::string(key) + '=' + ValueText(value) + ';';
}

/// "SQLOLEDB.1" is the first version of "SQLOLEDB", "Name.1.0" is not meant by anybody.
std::string ProviderName(const ConnectionString& connection) {
    std::string name = FoldedCase(connection.Value("Provider"));
    const std::size_t end = name.find_last_not_of("0123456789");
    if (end != std::string::npos && end + 1 < name.size() && name[end] == '.') name.resize(end);
    return name;
}

bool IsForSqlServer(string_view provider) {
    return provider == "sqloledb" || provider.starts_with("sqlncli") || provider.starts_with("msoledbsql");
}

bool AsksForIntegratedSecurity(string_view value) {
    const std::string folded = FoldedCase(value);
    return folded == "sspi" || folded == "true" || folded == "yes";
}

std::string ForSqlServer(const ConnectionString& connection, string_view provider) {
    const string_view driver =
        connection.Has("Driver") ? connection.Value("Driver") : SqlServerDriver(provider);
    std::string odbc = "Driver=" + InBraces(driver) + ';';
    for (const auto& [key, value] : connection.Entries()) {
        if (key == "integrated security" || key == "trusted_connection") {
            if (AsksForIntegratedSecurity(value)) odbc += Entry("Trusted_Connection", "Yes");
        } else if (const string_view name = OdbcName(kSqlServerNames, key); !name.empty()) {
            odbc += Entry(name, value);
        }
    }
    return odbc;
}

/// The extended properties are a connection string of ODBC's own.
std::string ForOdbc(const ConnectionString& connection) {
    std::string odbc;
    for (const auto& [key, value] : connection.Entries()) {
        if (key == "extended properties") {
            if (!value.empty()) odbc += value + (value.ends_with(';') ? "" : ";");
        } else if (key == "driver") {
            odbc += "Driver=" + InBraces(value) + ';';
        } else if (const string_view name = OdbcName(kOdbcProviderNames, key); !name.empty()) {
            odbc += Entry(name, value);
        }
    }
    return odbc;
}

}  // namespace

bool IsOleDb(const ConnectionString& connection) {
    return connection.Has("Provider");
}

std::string OleDbAsOdbc(const ConnectionString& connection) {
    const std::string provider = ProviderName(connection);
    if (IsForSqlServer(provider)) return ForSqlServer(connection, provider);
    if (provider == "msdasql") return ForOdbc(connection);
    RaiseConnectionFailed(
        "of OLE DB, the providers for SQL Server (SQLOLEDB, SQLNCLI, MSOLEDBSQL) and for ODBC (MSDASQL) are "
        "known; for another store use an ODBC connection string, \"Driver={...};...\" or \"DSN=...;...\"");
}

}  // namespace kxjob
