#include <sql.h>
#include <sqlext.h>

#include <stdexcept>

#include "recording/statement_tap.h"

// The linker leads every call of these functions here (-Wl,--wrap), and __real_... is the driver manager's
// own.

extern "C" {

SQLRETURN __real_SQLExecDirect(SQLHSTMT statement, SQLCHAR* text, SQLINTEGER length);
SQLRETURN __real_SQLPutData(SQLHSTMT statement, SQLPOINTER piece, SQLLEN length);
SQLRETURN __real_SQLPrepare(SQLHSTMT statement, SQLCHAR* text, SQLINTEGER length);

SQLRETURN __wrap_SQLExecDirect(SQLHSTMT statement, SQLCHAR* text, SQLINTEGER length) {
    if (auto* recording = kxjob::bench::Recording(); recording != nullptr) {
        const auto* bytes = reinterpret_cast<const char*>(text);
        recording->push_back(
            {length == SQL_NTS ? std::string(bytes) : std::string(bytes, static_cast<std::size_t>(length))});
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
    if (kxjob::bench::Recording() != nullptr) {
        throw std::logic_error("a prepared statement would go unrecorded: teach this tap what is bound");
    }
    return __real_SQLPrepare(statement, text, length);
}

}  // extern "C"
