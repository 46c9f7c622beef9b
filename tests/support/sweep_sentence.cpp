#include "support/sweep_sentence.h"

#include <algorithm>
#include <string_view>

namespace kxjob::testing_support {
namespace {

/// What the sweep says when `step` failed in the sweep itself or, for a nested method, in `inner`.
std::string SweepSentence(const std::string& step, const std::string& inner) {
    constexpr const char* kLook = "Unable to look for irrelevant jobs.\r\n\r\n";
    constexpr const char* kRemove = "Unable to remove irrelevant jobs.\r\n\r\n";
    if (inner == "RemoveJobAndItems") return kRemove;
    if (!inner.empty()) return {};
    if (step.ends_with("DataAccess") || step == "DataAccess.Query") return kLook;
    for (const std::string_view ofTheLoop : {"ArrayInspector", "TraceLog"}) {
        if (step.find(ofTheLoop) != std::string::npos) return kRemove;
    }
    return {};
}

}  // namespace

std::string DescriptionBehind(const std::vector<std::string>& running, std::size_t frames,
                              const std::string& step, std::string description) {
    for (std::size_t i = 0; i < std::min(frames, running.size()); ++i) {
        if (running[i] != "RemoveIrrelevantJobsInContainer") continue;
        description = SweepSentence(step, i == 0 ? std::string() : running[i - 1]) + description;
    }
    return description;
}

}  // namespace kxjob::testing_support
