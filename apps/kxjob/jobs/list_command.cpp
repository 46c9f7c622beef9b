#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <tuple>

#include "command_groups.h"
#include "jobs/job_commands.h"
#include "records/application_state_record.h"
#include "records/job_pace.h"
#include "records/job_record.h"
#include "store/store_options.h"
#include "terminal/counted.h"
#include "terminal/text_table.h"

namespace kxjob::command {
namespace {

struct ListOptions {
    StoreOptions store;
    JobFilter filter;
    std::string sort = "started";
    bool reverse = false;
    std::optional<std::size_t> limit;
    bool json = false;
};

using Order = std::function<bool(const JobRecord&, const JobRecord&)>;

/// By a text, as in a dictionary; by a time or a number, the greatest first. A job that has not started comes
/// before all that have. Ties are by GUID, so that a list is the same each time.
const std::map<std::string, Order>& Orders() {
    using Job = const JobRecord&;
    static const std::map<std::string, Order> orders = {
        {"guid", [](Job a, Job b) { return a.guid < b.guid; }},
        {"type", [](Job a, Job b) { return std::tie(a.type, a.guid) < std::tie(b.type, b.guid); }},
        {"state", [](Job a, Job b) { return std::tie(a.state, a.guid) < std::tie(b.state, b.guid); }},
        {"started",
         [](Job a, Job b) {
             if (a.started.has_value() != b.started.has_value()) return b.started.has_value();
             return std::tie(b.started, a.guid) < std::tie(a.started, b.guid);
         }},
        {"progress",
         [](Job a, Job b) {
             return std::tuple(PercentDone(b), a.guid) < std::tuple(PercentDone(a), b.guid);
         }},
        {"failed",
         [](Job a, Job b) { return std::tie(b.failedItems, a.guid) < std::tie(a.failedItems, b.guid); }},
        {"total",
         [](Job a, Job b) { return std::tie(b.totalItems, a.guid) < std::tie(a.totalItems, b.guid); }}};
    return orders;
}

std::vector<JobRecord> Wanted(const ListOptions& options, const StoreConnection& connection) {
    JobFilter filter = options.filter;
    if (!filter.applicationState.empty()) {
        filter.applicationState = ApplicationStates(connection).Meant(filter.applicationState);
    }
    std::vector<JobRecord> jobs = ReadJobs(connection, filter);
    std::ranges::sort(jobs, Orders().at(options.sort));
    if (options.reverse) std::ranges::reverse(jobs);
    return jobs;
}

void PrintTable(const std::vector<JobRecord>& jobs, std::size_t found) {
    TextTable table({"job", "type", "state", "done", "items", "failed", "started", "description"});
    for (const JobRecord& job : jobs) {
        table.AddCells({{job.guid},
                        {job.type},
                        StateCell(job.state),
                        {fmt::format("{:3.0f} %", PercentDone(job))},
                        {fmt::format("{} of {}", EndedItems(job), job.totalItems)},
                        {std::to_string(job.failedItems), job.failedItems > 0 ? Tone::kBad : Tone::kPlain},
                        {job.started.value_or("")},
                        {job.description}});
    }
    const std::string title = jobs.size() == found
                                  ? Counted(found, "job")
                                  : fmt::format("{} of {}", jobs.size(), Counted(found, "job"));
    table.Print(std::cout, title, Palette::OfStandardOutput());
}

void List(const ListOptions& options) {
    std::vector<JobRecord> jobs = Wanted(options, options.store.ResolveForJobs());
    const std::size_t found = jobs.size();
    if (options.limit && found > *options.limit) jobs.resize(*options.limit);
    if (!options.json) return PrintTable(jobs, found);
    Json list = Json::array();
    for (const JobRecord& job : jobs) list.push_back(ToJson(job));
    std::cout << OneLine({{"jobs", list}, {"found", found}}) << '\n';
}

}  // namespace

void AddListCommand(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("list", "List the jobs, the newest first");
    command->group(kJobs);
    const auto options = std::make_shared<ListOptions>();
    command->add_option("--type", options->filter.type, "Only jobs of this type")->type_name("TYPE");
    command->add_option("--state", options->filter.state, "Only jobs in this state, e.g. RUNNING")
        ->type_name("STATE");
    command
        ->add_option("--application-state", options->filter.applicationState,
                     "Only jobs of this application state: its GUID or its name, e.g. PRODUCTION")
        ->type_name("STATE");
    command->add_option("--sort", options->sort, "By which column; times and numbers the greatest first")
        ->check(CLI::IsMember({"guid", "type", "state", "started", "progress", "failed", "total"}))
        ->type_name("COLUMN")
        ->capture_default_str();
    command->add_flag("--reverse", options->reverse, "The other way round");
    command->add_option("--limit", options->limit, "Show no more than these")
        ->check(CLI::NonNegativeNumber)
        ->type_name("COUNT");
    command->add_flag("--json", options->json, "Print one JSON object");
    options->store.AddTo(*command);
    command->footer("Example:\n  kxjob list --state RUNNING --sort progress\n");
    command->callback([options] { List(*options); });
}

}  // namespace kxjob::command
