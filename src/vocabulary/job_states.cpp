#include <algorithm>
#include <array>
#include <string_view>

#include "frame/frame.h"
#include "kxjob/job_helper.h"
#include "vocabulary/states.h"

namespace kxjob {
namespace {

struct StateClass {
    std::string_view state;
    bool isComplete;
    bool isRunning;
};

constexpr std::array<StateClass, 6> kJobStates{{
    {job_state::kCreating, false, false},
    {job_state::kReady, false, false},
    {job_state::kQueued, false, true},
    {job_state::kRunning, false, true},
    {job_state::kComplete, true, false},
    {job_state::kCancelled, true, false},
}};

/// Guards and looks up a state; an unknown one raises `unknownStateError`.
const StateClass& Classify(Frame& frame, const std::string& stateId, std::int32_t unknownStateError) {
    frame.CheckParameter(stateId, "StateID");
    const auto* const found = std::find_if(kJobStates.begin(), kJobStates.end(),
                                           [&](const StateClass& known) { return known.state == stateId; });
    if (found == kJobStates.end()) {
        frame.Raise(unknownStateError, "The Job StateID '" + stateId + "' is not known");
    }
    return *found;
}

}  // namespace

bool JobHelper::IsJobComplete(std::string StateId) {
    const ArgumentList given = {{"StateId", StateId}};
    return InFrame("IsJobComplete", given,
                   [&](Frame& frame) { return Classify(frame, StateId, 743).isComplete; });
}

bool JobHelper::IsJobRunning(std::string StateId) {
    const ArgumentList given = {{"StateId", StateId}};
    return InFrame("IsJobRunning", given,
                   [&](Frame& frame) { return Classify(frame, StateId, 744).isRunning; });
}

}  // namespace kxjob
