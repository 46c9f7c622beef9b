#include "defaults/store/odbc/odbc_connection_string.h"

#include <array>
#include <string_view>

#include "automation/letter_case.h"
#include "defaults/store/odbc/ole_db.h"

namespace kxjob {
namespace {

using std::string_view;

/// What a driver whose name begins so (in lower case) is told where the connection string does not.
struct DriverSetting {
    string_view driver;
    string_view keyword;
    string_view value;
};

constexpr string_view kSqliteDriver = "sqlite3";

constexpr std::array kSettings = {
    DriverSetting{"postgresql", "LFConversion", "0"},
    // Together these find out within two minutes that the other side is not there any more.
    DriverSetting{"postgresql", "KeepaliveTime", "30"},
    DriverSetting{"postgresql", "KeepaliveInterval", "10"},
    DriverSetting{"postgresql", "pqopt", "{tcp_user_timeout=120000}"},
    // It knows nothing of ODBC's own time-outs.
    DriverSetting{"mariadb", "CONN_TIMEOUT", "15"},
    DriverSetting{"mariadb", "READ_TIMEOUT", "300"},
    DriverSetting{"mariadb", "WRITE_TIMEOUT", "300"},
    DriverSetting{"freetds", "ClientCharset", "UTF-8"},
    // Otherwise it tries one version of the protocol after the other, each for as long as a login may take.
    DriverSetting{"freetds", "TDS_Version", "7.4"},
    DriverSetting{kSqliteDriver, "NoCreat", "1"},
};

std::string InOdbcKeywords(const ConnectionString& connection) {
    return IsOleDb(connection) ? OleDbAsOdbc(connection) : connection.Text();
}

/// The first of two entries counts, so that `text` has the last word.
std::string WithSettings(std::string text) {
    const ConnectionString connection(text);
    const std::string driver = FoldedCase(connection.Value("Driver"));
    for (const DriverSetting& setting : kSettings) {
        if (!driver.starts_with(setting.driver) || connection.Has(setting.keyword)) continue;
        if (!text.ends_with(';')) text += ';';
        text.append(setting.keyword).append("=").append(setting.value).append(";");
    }
    return text;
}

}  // namespace

bool IsForOdbc(const ConnectionString& connection) {
    return connection.Has("Driver") || connection.Has("DSN") || connection.Has("FileDSN") ||
           IsOleDb(connection);
}

std::string OdbcConnectionString(const ConnectionString& connection) {
    return WithSettings(InOdbcKeywords(connection));
}

bool DriverMakesFiles(const ConnectionString& connection) {
    const ConnectionString odbc(InOdbcKeywords(connection));
    return FoldedCase(odbc.Value("Driver")).starts_with(kSqliteDriver);
}

std::string OdbcCreatingConnectionString(const ConnectionString& connection) {
    return WithSettings("NoCreat=0;" + InOdbcKeywords(connection));
}

}  // namespace kxjob
