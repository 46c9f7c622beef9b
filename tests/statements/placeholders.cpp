#include "statements/placeholders.h"

#include <map>
#include <regex>
#include <set>

#include "statements/variant.h"
#include "support/every_method.h"

namespace kxjob::testing_support {
namespace {

/// What the variants and the rows of the store give.
const std::map<std::string, std::string>& NamesOfTexts() {
    static const std::map<std::string, std::string> names{
        {kJobGuid, ":JobGUID"},
        {kNewJobGuid, ":GUID"},
        {kItemGuid, ":JobItemGUID"},
        {kIdentifierGuid, ":IdentifierGUID"},
        {kOtherIdentifierGuid, ":IdentifierGUID"},
        {kTaskGuid, ":JobTaskGUID"},
        {kLockGuid, ":OldLockGUID"},
        {kOtherLockGuid, ":LockGUID"},
        {kStateGuid, ":ApplicationStateGUID"},
        {kProductionGuid, ":ProductionStateGUID"},
        {kDevelopmentGuid, ":DevelopmentStateGUID"},
        {kJobType, ":JobTypeID"},
        {kAnyJobState, ":JobStateID"},
        {kAnyItemState, ":JobItemStateID"},
        {kAnyTaskState, ":JobTaskStateID"},
        {kAnyState, ":StateId"},
        {"a description", ":Description"},
        {"a user", ":User"},
        {"a machine", ":MachineName"},
        {"a command", ":Command"},
        {"some data", ":Data"},
        {"<parameters/>", ":Parameters"},
        {"a start", ":StartISODateTime"},
        {"an end", ":EndISODateTime"},
        {"a note", ":note"},
    };
    return names;
}

const std::map<std::string, std::string>& NamesOfNumbers() {
    static const std::map<std::string, std::string> names{
        {std::to_string(kAnyProcess), ":PID"},
        {std::to_string(kAnyThread), ":ThreadID"},
        {std::to_string(kAnyItemCount), ":TotalItemCount"},
        {std::to_string(kAnySequence), ":Sequence"},
        {"90.5", ":NewLockDuration"},
    };
    return names;
}

/// What the library's own statements say.
bool IsOfTheStatement(const std::string& text) {
    static const std::set<std::string> words{
        "",           "QUEUED",      "RUNNING",    "COMPLETE",    "FAILED",          "CREATING",
        "PRODUCTION", "DEVELOPMENT", "JOB_CREATE", "JOB_REMOVED", "KVR_TRANSACTION", "JOB_STATUS_UPDATE"};
    return words.contains(text);
}

std::string NameOfText(const std::string& text) {
    static const std::regex guid(R"(\{[0-9A-F-]{36}\})");
    static const std::regex time(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z)");
    const auto known = NamesOfTexts().find(text);
    if (known != NamesOfTexts().end()) return known->second;
    if (IsOfTheStatement(text)) return "'" + text + "'";
    if (std::regex_match(text, guid)) return ":newGUID";
    if (std::regex_match(text, time)) return ":now";
    return text.find("Machine details") != std::string::npos ? ":failurenote" : ":text";
}

std::string NameOfNumber(const std::string& number, bool isInsert) {
    const auto known = NamesOfNumbers().find(number);
    if (known != NamesOfNumbers().end()) return known->second;
    const bool isOfTheStatement = !isInsert && (number == "0" || number == "1");
    return isOfTheStatement ? number : ":number";
}

}  // namespace

std::string WithPlaceholders(const std::string& sql) {
    static const std::regex value(R"('((?:[^']|'')*)'|\b\d+(?:\.\d+)?\b)");
    static const std::regex list(R"((IN ?\()(:\w+)(?:, ?:\w+)*\))");
    const bool isInsert = sql.starts_with("INSERT");
    std::string shape;
    auto from = sql.cbegin();
    for (std::sregex_iterator found(sql.begin(), sql.end(), value), end; found != end; ++found) {
        const std::smatch& match = *found;
        shape.append(from, match[0].first);
        shape += match[0].str().front() == '\'' ? NameOfText(match[1]) : NameOfNumber(match[0], isInsert);
        from = match[0].second;
    }
    shape.append(from, sql.cend());
    return std::regex_replace(shape, list, "$1$2, ...)");
}

}  // namespace kxjob::testing_support
