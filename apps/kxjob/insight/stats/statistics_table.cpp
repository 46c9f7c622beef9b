#include "insight/stats/statistics_table.h"

#include <fmt/format.h>

#include "terminal/text_table.h"

namespace kxjob::command {
namespace {

std::string Text(std::optional<double> number) {
    return number ? fmt::format("{:.3f}", *number) : "-";
}

}  // namespace

void PrintStatistics(std::ostream& out, const std::vector<JobStatistics>& jobs) {
    TextTable table({"job", "state", "items", "succeeded", "failed", "seconds", "items/s", "mean increment",
                     "deviation", "item median", "item 90 %"});
    for (const JobStatistics& one : jobs) {
        table.AddRow({one.job.guid, one.job.state, std::to_string(one.job.totalItems),
                      std::to_string(one.job.succeededItems), std::to_string(one.job.failedItems),
                      Text(one.duration), Text(one.itemsPerSecond), Text(one.meanIncrement),
                      Text(one.incrementDeviation), Text(one.itemMedian), Text(one.itemNineTenths)});
    }
    table.Print(out, "Execution of jobs, times in seconds");
}

}  // namespace kxjob::command
