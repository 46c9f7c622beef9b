#include "defaults/store/data_access_error.h"

namespace kxjob {
namespace {

constexpr const char* kSource = "kxJob.DataAccess";

std::string InBrackets(std::string_view sqlState) {
    return '[' + std::string(sqlState) + "] ";
}

}  // namespace

void RaiseStatementFailed(std::string_view sqlState, std::string_view what) {
    throw AutomationError(error_number::kStatementFailed, kSource, InBrackets(sqlState).append(what));
}

void RaiseConnectionFailed(std::string_view why, std::string_view sqlState) {
    throw AutomationError(error_number::kConnectionFailed, kSource,
                          InBrackets(sqlState).append("The connection could not be opened: ").append(why));
}

void RaiseNoRow() {
    throw AutomationError(error_number::kNoRow, kSource,
                          InBrackets("02000").append("The query found no row"));
}

std::string_view StateOf(const AutomationError& error) {
    const std::string_view description = error.Description();
    return description.starts_with('[') ? description.substr(1, description.find(']') - 1)
                                        : std::string_view();
}

std::string WithPlace(const std::string& description, std::string_view place) {
    const std::size_t stateEnd = description.starts_with('[') ? description.find("] ") : std::string::npos;
    const std::size_t at = stateEnd == std::string::npos ? 0 : stateEnd + 2;
    return std::string(description).insert(at, std::string(place) + ": ");
}

std::string PlaceInBatch(std::size_t index, std::size_t count) {
    return "statement " + std::to_string(index + 1) + " of " + std::to_string(count);
}

}  // namespace kxjob
