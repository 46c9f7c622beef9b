#pragma once

#include <string>
#include <vector>

#include "insight/why/job_standing.h"
#include "value_json.h"

namespace kxjob::command {

/// Why a job is worked on, or not.
struct Explanation {
    /// One word for programs: "ended", "not-started", "type-missing", "component-missing",
    /// "selection-fails", "no-items-left", "in-work", "next", "waiting" or "full".
    std::string verdict;
    /// The same for people, what matters most first.
    std::vector<std::string> sentences;
};

Explanation Explain(const JobStanding& standing);

/// The verdict, the sentences and the facts behind them.
Json ToJson(const JobStanding& standing, const Explanation& explanation);

}  // namespace kxjob::command
