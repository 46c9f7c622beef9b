#include "defaults/store/odbc/odbc_prepared_statements.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include "defaults/store/data_access_error.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

/// Texts that are remembered, before all of them are forgotten.
constexpr std::size_t kMostTexts = 256;

/// False when it was there already.
bool Remember(std::unordered_set<std::string>& texts, const std::string& text) {
    if (texts.contains(text)) return false;
    if (texts.size() == kMostTexts) texts.clear();
    return texts.insert(text).second;
}

/// The same as in a statement only where the server reads the literal as a number of 32 bits, too.
bool FitsParameter(const SqlLiteral& literal) {
    return literal.isText || std::in_range<std::int32_t>(literal.number);
}

/// Whether a statement was not understood, so that nothing was done: it may be that only the prepared form
/// was not. A type could not be told (42...), a feature is not there (0A000, 07...), the server or a
/// connection pool has no such prepared statement any more (26000).
bool IsRefusal(const AutomationError& error) {
    const std::string_view state = StateOf(error);
    return state.starts_with("42") || state.starts_with("07") || state == "0A000" || state == "26000";
}

}  // namespace

OdbcStatement* OdbcPreparedStatements::Execute(const std::string& sql) {
    if (!connection_.Engine().prepares || !IsOneToPrepare(sql)) return nullptr;
    const std::string& text = shape_.Text();
    if (const auto* kept = kept_.Find(text); kept != nullptr) {
        if (IsStarted(**kept)) return kept->get();
        kept_.Drop(text);
        return nullptr;
    }
    if (refused_.contains(text) || Remember(cameOnce_, text)) return nullptr;
    std::unique_ptr<OdbcStatement> fresh = Prepared(text);
    if (fresh == nullptr || !IsStarted(*fresh)) {
        Remember(refused_, text);
        return nullptr;
    }
    return kept_.Keep(text, std::move(fresh)).get();
}

bool OdbcPreparedStatements::IsOneToPrepare(const std::string& sql) {
    return shape_.Read(sql) && std::ranges::all_of(shape_.Literals(), FitsParameter);
}

std::unique_ptr<OdbcStatement> OdbcPreparedStatements::Prepared(const std::string& text) {
    auto statement = std::make_unique<OdbcStatement>(connection_);
    try {
        statement->Prepare(text);
    } catch (const AutomationError&) {
        if (connection_.IsLost()) throw;
        return nullptr;
    }
    return statement;
}

bool OdbcPreparedStatements::IsStarted(OdbcStatement& statement) {
    try {
        statement.Execute(shape_.Literals());
    } catch (const AutomationError& error) {
        statement.Close();
        if (connection_.IsLost() || !IsRefusal(error)) throw;
        return false;
    }
    return true;
}

}  // namespace kxjob
