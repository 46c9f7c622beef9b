// Connection strings of any bytes. Where the library finds a password, the journal does not show it and no
// error tells it; what goes to ODBC is understood again, holds every entry, and needs no further translation.

#include "defaults/store/connection_string.h"

#include <algorithm>

#include "defaults/store/odbc/odbc_connection_string.h"
#include "defaults/store/odbc/ole_db.h"
#include "journal/connection_secrets.h"
#include "kxjob/automation_error.h"
#include "support/fuzz_input.h"

namespace {

using kxjob::ConnectionString;
using kxjob::fuzz::Require;

/// What the kept inputs have as a password: a text that nothing else holds.
constexpr std::string_view kPassword = "T1ger";

std::size_t Occurrences(std::string_view text, std::string_view piece) {
    std::size_t count = 0;
    for (std::size_t place = 0; (place = text.find(piece, place)) != std::string_view::npos; ++count) {
        place += piece.size();
    }
    return count;
}

bool IsSecret(std::string_view key) {
    return key.ends_with("pwd") || key.ends_with("password");
}

/// How often the password stands in values that are marked as one.
std::size_t Marked(const ConnectionString& connection) {
    std::size_t count = 0;
    for (const auto& [key, value] : connection.Entries()) {
        if (IsSecret(key)) count += Occurrences(value, kPassword);
    }
    return count;
}

void CheckRedaction(const std::string& text) {
    const std::string shown = kxjob::WithoutSecrets(text);
    Require(kxjob::WithoutSecrets(shown) == shown, "what is shown has nothing more to hide");
    try {
        const ConnectionString connection(text);
        const std::size_t elsewhere =
            Occurrences(text, kPassword) - Marked(connection);  // which is no secret
        Require(Occurrences(shown, kPassword) <= elsewhere, "no password is shown");
    } catch (const kxjob::AutomationError&) {
    }
}

void CheckTranslation(const ConnectionString& connection) {
    const std::string odbc = kxjob::OdbcConnectionString(connection);
    const ConnectionString again(odbc);
    if (kxjob::IsOleDb(again)) return;  // OLE DB inside the extended properties: ODBC will refuse it
    Require(kxjob::OdbcConnectionString(again) == odbc, "what goes to ODBC needs no further translation");
    Require(Marked(again) >=
                (connection.Has("Password") ? Occurrences(connection.Value("Password"), kPassword) : 0),
            "the password is handed on, as one");
    if (kxjob::IsOleDb(connection)) return;
    Require(odbc.starts_with(connection.Text()), "ODBC's own text comes first");
    Require(std::equal(connection.Entries().begin(), connection.Entries().end(), again.Entries().begin()),
            "every entry is handed on");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    CheckRedaction(text);
    try {
        const ConnectionString connection(text);
        if (kxjob::IsForOdbc(connection)) CheckTranslation(connection);
    } catch (const kxjob::AutomationError& error) {
        Require(error.Number() == kxjob::error_number::kConnectionFailed, "a refusal has the one number");
        Require(error.Description().find(kPassword) == std::string::npos, "an error never tells a password");
        Require(error.Description().size() < 400, "an error does not hold the text");
    }
    return 0;
}
