#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "insight/stats/job_statistics.h"

namespace kxjob::command {

/// The finished items of jobs over the time since each job's start.
class Plot {
public:
    explicit Plot(const std::vector<JobStatistics>& jobs);

    /// Whether there is anything to be seen.
    bool IsEmpty() const { return lines_.empty(); }
    /// Each is nothing when there is no program on this machine that draws.
    std::optional<std::string> AsText(std::size_t columns, std::size_t rows) const;
    std::optional<std::string> AsSvg() const;

private:
    std::string Script(const std::string& terminal) const;

    struct Line {
        std::string title;
        std::string points;  // "seconds items" on each line
    };
    std::vector<Line> lines_;
};

}  // namespace kxjob::command
