#include <sql.h>
#include <sqlext.h>

#include <algorithm>
#include <map>
#include <vector>

#include "recording/statement_tap.h"

namespace {

/// A parameter as it was bound; what it points to is read when the statement runs.
struct Bound {
    SQLSMALLINT type = 0;
    SQLPOINTER value = nullptr;
    SQLLEN* length = nullptr;

    std::string Literal() const {
        if (type == SQL_C_SLONG) return std::to_string(*static_cast<const SQLINTEGER*>(value));
        return '\'' + std::string(static_cast<const char*>(value), static_cast<std::size_t>(*length)) + '\'';
    }
};

struct Prepared {
    std::string text;
    std::vector<Bound> parameters;

    /// As it would have been written without parameters.
    std::string Statement() const {
        std::string statement;
        std::size_t next = 0;
        char quote = '\0';
        for (const char character : text) {
            if (quote == '\0' && character == '?') {
                statement += parameters.at(next++).Literal();
                continue;
            }
            if (quote == character) {
                quote = '\0';
            } else if (quote == '\0' && (character == '\'' || character == '"' || character == '`')) {
                quote = character;
            }
            statement += character;
        }
        return statement;
    }
};

std::map<SQLHSTMT, Prepared>& PreparedStatements() {
    thread_local std::map<SQLHSTMT, Prepared> prepared;
    return prepared;
}

std::string TextOf(const SQLCHAR* text, SQLINTEGER length) {
    const auto* bytes = reinterpret_cast<const char*>(text);
    return length == SQL_NTS ? std::string(bytes) : std::string(bytes, static_cast<std::size_t>(length));
}

}  // namespace

// The linker leads every call of these functions here (-Wl,--wrap), and __real_... is the driver manager's
// own.

extern "C" {

SQLRETURN __real_SQLExecDirect(SQLHSTMT statement, SQLCHAR* text, SQLINTEGER length);
SQLRETURN __real_SQLPutData(SQLHSTMT statement, SQLPOINTER piece, SQLLEN length);
SQLRETURN __real_SQLPrepare(SQLHSTMT statement, SQLCHAR* text, SQLINTEGER length);
SQLRETURN __real_SQLBindParameter(SQLHSTMT statement, SQLUSMALLINT place, SQLSMALLINT direction,
                                  SQLSMALLINT type, SQLSMALLINT sqlType, SQLULEN size, SQLSMALLINT digits,
                                  SQLPOINTER value, SQLLEN room, SQLLEN* length);
SQLRETURN __real_SQLExecute(SQLHSTMT statement);

SQLRETURN __wrap_SQLExecDirect(SQLHSTMT statement, SQLCHAR* text, SQLINTEGER length) {
    if (auto* recording = kxjob::bench::Recording(); recording != nullptr) {
        recording->push_back({TextOf(text, length)});
    }
    return __real_SQLExecDirect(statement, text, length);
}

SQLRETURN __wrap_SQLPutData(SQLHSTMT statement, SQLPOINTER piece, SQLLEN length) {
    if (auto* recording = kxjob::bench::Recording(); recording != nullptr) {
        auto& text = recording->back().boundText;
        if (!text) text.emplace();
        text->append(static_cast<const char*>(piece), static_cast<std::size_t>(length));
    }
    return __real_SQLPutData(statement, piece, length);
}

SQLRETURN __wrap_SQLPrepare(SQLHSTMT statement, SQLCHAR* text, SQLINTEGER length) {
    PreparedStatements()[statement] = {TextOf(text, length), {}};
    return __real_SQLPrepare(statement, text, length);
}

SQLRETURN __wrap_SQLBindParameter(SQLHSTMT statement, SQLUSMALLINT place, SQLSMALLINT direction,
                                  SQLSMALLINT type, SQLSMALLINT sqlType, SQLULEN size, SQLSMALLINT digits,
                                  SQLPOINTER value, SQLLEN room, SQLLEN* length) {
    if (const auto prepared = PreparedStatements().find(statement); prepared != PreparedStatements().end()) {
        auto& parameters = prepared->second.parameters;
        parameters.resize(std::max<std::size_t>(parameters.size(), place));
        parameters[place - 1U] = {type, value, length};
    }
    return __real_SQLBindParameter(statement, place, direction, type, sqlType, size, digits, value, room,
                                   length);
}

SQLRETURN __wrap_SQLExecute(SQLHSTMT statement) {
    if (auto* recording = kxjob::bench::Recording(); recording != nullptr) {
        recording->push_back({PreparedStatements().at(statement).Statement()});
    }
    return __real_SQLExecute(statement);
}

}  // extern "C"
