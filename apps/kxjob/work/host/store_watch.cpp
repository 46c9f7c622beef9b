#include "work/host/store_watch.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace kxjob::command {
namespace {

constexpr double kLongestPause = 5;
constexpr std::chrono::seconds kPatienceAtTheEnd{10};

/// The SQLSTATE in brackets that a description starts with.
std::string_view StateOf(std::string_view description) {
    constexpr std::size_t kLength = 5;
    if (description.size() < kLength + 2 || description[0] != '[' || description[kLength + 1] != ']')
        return {};
    return description.substr(1, kLength);
}

/// Another transaction was in the way; it is over by the next try.
bool IsConflict(const AutomationError& error) {
    return StateOf(error.Description()).starts_with("40");
}

}  // namespace

bool IsStoreAway(const AutomationError& error) {
    if (error.Number() == error_number::kConnectionFailed) return true;
    if (error.Number() != error_number::kStatementFailed) return false;
    const std::string_view state = StateOf(error.Description());
    if (state == "HYT00" || state == "25006") return true;
    constexpr std::array<std::string_view, 5> kClasses{"08", "57", "40", "53", "55"};
    return std::any_of(kClasses.begin(), kClasses.end(),
                       [&](std::string_view stateClass) { return state.starts_with(stateClass); });
}

bool StoreWatch::IsAway(const AutomationError& error) {
    if (!IsStoreAway(error)) return false;
    if (!IsConflict(error) && !away_.exchange(true)) report_.StoreAway(error.Description());
    return true;
}

void StoreWatch::IsBack() {
    if (away_.exchange(false)) report_.StoreBack();
}

bool StoreWatch::Note(const Tries& tries, const AutomationError& error) {
    IsAway(error);
    return !state_.Stopping() || Clock::now() - tries.first < kPatienceAtTheEnd;
}

void StoreWatch::Wait(Tries& tries) {
    state_.Pause(tries.pause);
    tries.pause = std::min(tries.pause * 2, kLongestPause);
}

}  // namespace kxjob::command
