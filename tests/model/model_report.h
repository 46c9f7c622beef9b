#pragma once

#include <cstddef>
#include <map>
#include <string>

namespace kxjob::model {

/// How many steps were compared, and how many of them ended with an error, as they had to.
struct StepCount {
    std::size_t compared = 0;
    std::size_t raised = 0;
};

/// By method, or by what others did.
using StepCounts = std::map<std::string, StepCount>;

std::size_t AllCompared(const StepCounts& counts);

/// Says how many steps were compared on an engine, and where KXJOB_PROOF names a folder, writes the
/// counts by method into a table of its own.
void ReportSteps(const std::string& engine, const StepCounts& counts, std::size_t least);

}  // namespace kxjob::model
