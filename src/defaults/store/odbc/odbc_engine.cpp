#include "defaults/store/odbc/odbc_engine.h"

#include <algorithm>
#include <array>

namespace kxjob {
namespace {

using std::string_view;

constexpr BatchForm kOneByOne = {.transaction = true, .joined = false};

/// A batch that is one exchange outside a transaction is a transaction by itself. A prepared statement is
/// planned for its values at each run: a plan that was made when a table was small would be kept while it
/// grows.
constexpr std::array<string_view, 1> kPostgreSqlSetUp = {
    "SET plan_cache_mode = force_custom_plan; SET standard_conforming_strings = on; "
    "SET SESSION CHARACTERISTICS AS TRANSACTION ISOLATION LEVEL READ COMMITTED; "
    "SET lock_timeout = 30000; SET client_min_messages = warning"};
constexpr string_view kPostgreSqlNow =
    R"(SELECT to_char(clock_timestamp() AT TIME ZONE 'UTC', 'YYYY-MM-DD"T"HH24:MI:SS.MS"Z"'))";
constexpr BatchForm kPostgreSqlBatch = {.transaction = false, .joined = true, .rows = true, .between = ";\n"};
constexpr std::array kPostgreSqlErrors = {
    ErrorRule{.state = "42P01", .meaning = "42S02"},  // no such table
    ErrorRule{.state = "42703", .meaning = "42S22"},  // no such column
    ErrorRule{.state = "55P03", .meaning = "HYT00"},  // lock time-out
    ErrorRule{.state = "40P01", .meaning = "40001"},  // deadlock
    ErrorRule{.state = "57P01", .lost = true},        // the server ends the connection
    ErrorRule{.state = "57P02", .lost = true},
    ErrorRule{.state = "57P03", .lost = true},
    ErrorRule{.state = "25006", .lost = true},  // a replica: another server may take writes by now
    // Said of a prepared statement's parameters, by a driver that may still take the connection for alive.
    ErrorRule{.state = "HY000", .messagePart = "connection has been lost", .meaning = "08S01", .lost = true},
};

/// Without STRICT a server cuts off what is too long and says nothing. The session of a cluster waits until
/// it sees what the other nodes have acknowledged.
constexpr std::array<string_view, 2> kMariaDbSetUp = {
    "SET SESSION sql_mode='STRICT_ALL_TABLES,NO_ENGINE_SUBSTITUTION,NO_BACKSLASH_ESCAPES,ANSI_QUOTES', "
    "SESSION innodb_lock_wait_timeout=30, SESSION wsrep_sync_wait=3",
    "SET SESSION TRANSACTION ISOLATION LEVEL READ COMMITTED"};
constexpr std::array<string_view, 2> kMySqlSetUp = {
    "SET SESSION sql_mode='STRICT_ALL_TABLES,NO_ENGINE_SUBSTITUTION,NO_BACKSLASH_ESCAPES,ANSI_QUOTES', "
    "SESSION innodb_lock_wait_timeout=30",
    "SET SESSION TRANSACTION ISOLATION LEVEL READ COMMITTED"};
constexpr string_view kMariaDbNow =
    "SELECT CONCAT(LEFT(DATE_FORMAT(UTC_TIMESTAMP(3), '%Y-%m-%dT%H:%i:%s.%f'), 23), 'Z')";
constexpr BatchForm kMariaDbBatch = {
    .transaction = false,
    .joined = true,
    .rows = true,
    .before =
        "BEGIN NOT ATOMIC\n"
        "DECLARE EXIT HANDLER FOR SQLEXCEPTION BEGIN ROLLBACK; RESIGNAL; END;\n"
        "START TRANSACTION;\n",
    .between = ";\n",
    .after = ";\nCOMMIT;\nEND"};
constexpr std::array kMariaDbErrors = {
    ErrorRule{.native = 2006, .meaning = "08S01", .lost = true},  // the server has gone away
    ErrorRule{.native = 2013, .meaning = "08S01", .lost = true},  // lost during a statement
    ErrorRule{.native = 1047, .meaning = "08S01", .lost = true},  // a node without quorum
    // A socket that broke under the driver, which has no state of its own for it.
    ErrorRule{.state = "HY000", .messagePart = "Write error: ", .meaning = "08S01", .lost = true},
    ErrorRule{.state = "HY000", .messagePart = "Read error: ", .meaning = "08S01", .lost = true},
    // A prepared SELECT of * whose table has other columns now.
    ErrorRule{
        .state = "HY000", .messagePart = "differs from number of columns in resultset", .meaning = "0A000"},
    ErrorRule{.native = 1205, .meaning = "HYT00"},    // lock time-out
    ErrorRule{.state = "21S01", .meaning = "42000"},  // more values than columns
};

constexpr std::array<string_view, 1> kSqlServerSetUp = {
    "SET TEXTSIZE 2147483647; SET QUOTED_IDENTIFIER ON; SET ANSI_NULLS ON; SET XACT_ABORT ON; "
    "SET NOCOUNT ON; SET LOCK_TIMEOUT 30000"};
constexpr string_view kSqlServerNow =
    "SELECT CONVERT(varchar(23), CAST(SYSUTCDATETIME() AS datetime2(3)), 126) + 'Z'";
constexpr BatchForm kSqlServerBatch = {.transaction = true, .joined = true, .between = ";\n"};
constexpr std::array kSqlServerErrors = {
    ErrorRule{.native = 20017, .meaning = "08S01", .lost = true},  // the server has gone away
    ErrorRule{.native = 1222, .meaning = "HYT00"},                 // lock time-out
    ErrorRule{.native = 1205, .meaning = "40001"},                 // deadlock
};

/// A file is not looked into before something is asked of it. The driver has one state for all faults; its
/// natives are the result codes of SQLite.
constexpr std::array<string_view, 2> kSqliteSetUp = {"PRAGMA busy_timeout = 30000", "PRAGMA schema_version"};
constexpr string_view kSqliteNow = "SELECT strftime('%Y-%m-%dT%H:%M:%fZ', 'now')";
constexpr std::array kSqliteErrors = {
    ErrorRule{.native = 1, .messagePart = "no such table", .meaning = "42S02"},
    ErrorRule{.native = 1, .messagePart = "no such column", .meaning = "42S22"},
    ErrorRule{.native = 1, .messagePart = " has no column named ", .meaning = "42S22"},
    ErrorRule{.native = 1, .meaning = "42000"},
    ErrorRule{.native = 5, .meaning = "HYT00"},
    ErrorRule{.native = 6, .meaning = "HYT00"},
    ErrorRule{.native = 8, .meaning = "25006"},
    ErrorRule{.native = 10, .lost = true},
    ErrorRule{.native = 11, .meaning = "XX001", .lost = true},
    ErrorRule{.native = 13, .meaning = "53100"},
    ErrorRule{.native = 19, .meaning = "23000"},
    ErrorRule{.native = 26, .meaning = "XX001", .lost = true},
};

constexpr std::array kEngines = {
    OdbcEngine{"PostgreSQL", kPostgreSqlSetUp, kPostgreSqlBatch, kDriverLongText, kPostgreSqlErrors,
               kPostgreSqlNow, true},
    OdbcEngine{"MariaDB", kMariaDbSetUp, kMariaDbBatch, kDriverLongText, kMariaDbErrors, kMariaDbNow, true},
    OdbcEngine{"MySQL", kMySqlSetUp, kOneByOne, kDriverLongText, kMariaDbErrors, kMariaDbNow},
    OdbcEngine{"Microsoft SQL Server", kSqlServerSetUp, kSqlServerBatch, SQL_WLONGVARCHAR, kSqlServerErrors,
               kSqlServerNow},
    OdbcEngine{"SQLite", kSqliteSetUp, kOneByOne, kDriverLongText, kSqliteErrors, kSqliteNow},
};

constexpr OdbcEngine kAnyOther = {"", {}, kOneByOne, kDriverLongText, {}};

bool Fits(const ErrorRule& rule, const Diagnostic& error) {
    return (rule.state.empty() || rule.state == error.state) &&
           (rule.native == 0 || rule.native == error.native) &&
           error.message.find(rule.messagePart) != std::string::npos;
}

}  // namespace

const OdbcEngine& OdbcEngineNamed(string_view dbmsName) {
    const auto* engine = std::find_if(kEngines.begin(), kEngines.end(), [&](const OdbcEngine& candidate) {
        return candidate.dbmsName == dbmsName;
    });
    return engine == kEngines.end() ? kAnyOther : *engine;
}

ErrorMeaning MeaningOf(const Diagnostic& error, const OdbcEngine& engine) {
    ErrorMeaning meaning{error.state, error.state.starts_with("08")};
    const auto rule = std::find_if(engine.errors.begin(), engine.errors.end(),
                                   [&](const ErrorRule& candidate) { return Fits(candidate, error); });
    if (rule == engine.errors.end()) return meaning;
    if (!rule->meaning.empty()) meaning.state = rule->meaning;
    meaning.lost = meaning.lost || rule->lost;
    return meaning;
}

}  // namespace kxjob
