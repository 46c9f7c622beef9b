#include "insight/stats/stats_command.h"

#include <cerrno>
#include <fstream>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <system_error>

#include "command_groups.h"
#include "insight/stats/item_times.h"
#include "insight/stats/plot.h"
#include "insight/stats/statistics_table.h"
#include "store/store_options.h"
#include "terminal/window_size.h"

namespace kxjob::command {
namespace {

constexpr std::size_t kPlotRows = 20;

struct StatsOptions {
    std::vector<std::string> jobs;
    std::string type;
    StoreOptions store;
    std::string svgFile;
    std::size_t width = 0;
    bool json = false;
};

std::vector<JobRecord> JobsOf(const StatsOptions& options, const StoreConnection& store) {
    if (options.jobs.empty()) return ReadJobs(store, {.type = options.type});
    std::vector<JobRecord> jobs;
    jobs.reserve(options.jobs.size());
    for (const std::string& job : options.jobs) jobs.push_back(ReadJob(store, job));
    return jobs;
}

std::vector<JobStatistics> ReadStatistics(const StatsOptions& options) {
    const StoreConnection store = options.store.ResolveForJobs();
    const std::vector<JobRecord> jobs = JobsOf(options, store);
    std::map<std::string, std::vector<ItemTime>> times = ReadItemTimes(store, jobs);
    std::vector<JobStatistics> statistics;
    statistics.reserve(jobs.size());
    for (const JobRecord& job : jobs) statistics.push_back(StatisticsOf(job, times[job.guid]));
    return statistics;
}

void PrintPlot(const Plot& plot, std::size_t columns) {
    if (plot.IsEmpty()) return;
    if (const std::optional<std::string> text = plot.AsText(columns, kPlotRows)) {
        std::cout << *text;
    } else {
        std::cout << "There is no plot: this machine does not have the program gnuplot.\n";
    }
}

void WriteSvg(const Plot& plot, const std::string& path) {
    if (plot.IsEmpty())
        throw std::runtime_error("No item of these jobs has ended: there is nothing to plot.");
    const std::optional<std::string> picture = plot.AsSvg();
    if (!picture)
        throw std::runtime_error("There is no picture: this machine does not have the program gnuplot.");
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << *picture << std::flush;
    if (!file) {
        throw std::runtime_error("The picture " + path +
                                 " cannot be written: " + std::generic_category().message(errno) + ".");
    }
}

void RunStats(const StatsOptions& options) {
    const std::vector<JobStatistics> statistics = ReadStatistics(options);
    const Plot plot(statistics);
    if (options.json) {
        Json list = Json::array();
        for (const JobStatistics& one : statistics) list.push_back(ToJson(one));
        std::cout << OneLine({{"jobs", list}}) << '\n';
    } else {
        PrintStatistics(std::cout, statistics);
        PrintPlot(plot, options.width > 0 ? options.width : SizeOfWindow().columns);
    }
    if (!options.svgFile.empty()) WriteSvg(plot, options.svgFile);
}

}  // namespace

void AddStatsCommand(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("stats", "Show how jobs went: counts, times and a plot");
    command->group(kExecution);
    const auto options = std::make_shared<StatsOptions>();
    CLI::Option* const jobs = command->add_option("JOB", options->jobs, "The jobs' GUIDs; all when left out");
    command->add_option("--type", options->type, "The jobs of one job type")->excludes(jobs);
    command->add_option("--svg", options->svgFile, "Write the plot as a picture, too")->type_name("FILE");
    command
        ->add_option("--width", options->width, "The columns of the plot; those of the window when left out")
        ->check(CLI::Range(40, 1000));
    options->store.AddTo(*command);
    command->add_flag("--json", options->json, "Print one JSON object instead of the table and the plot");
    command->callback([options] { RunStats(*options); });
}

}  // namespace kxjob::command
