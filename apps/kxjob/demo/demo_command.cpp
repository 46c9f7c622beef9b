#include "demo/demo_command.h"

#include <unistd.h>

#include <chrono>
#include <iostream>
#include <memory>
#include <thread>

#include "command_groups.h"
#include "demo/demo_files.h"
#include "demo/demo_hosts.h"
#include "demo/demo_report.h"
#include "demo/file_digest.h"
#include "exit_status.h"
#include "kxjob/array.h"
#include "kxjob/automation_error.h"
#include "kxjob/caller_texts.h"
#include "kxjob/duration_timer.h"
#include "kxjob/enums.h"
#include "kxjob/job_helper.h"
#include "kxjob/store.h"
#include "store/store_options.h"
#include "terminal/progress_bar.h"
#include "usage_error.h"

namespace kxjob::command {
namespace {

constexpr const char* kJobType = "DIGEST";
constexpr std::chrono::milliseconds kBetweenLooks{50};

struct DemoOptions {
    std::string folder = "/usr/share/doc";
    StoreOptions store;
    int threads = 4;
    std::size_t limit = 0;
    bool keep = false;
};

/// How many items have ended.
struct ItemCounts {
    std::size_t succeeded = 0;
    std::size_t failed = 0;
};

std::size_t Done(const ItemCounts& counts) {
    return counts.succeeded + counts.failed;
}

/// The demo's job, from its store to its end.
class Demo {
public:
    Demo(StoreConnection connection, std::vector<std::string> files, int threads)
        : store_(std::move(connection)),
          files_(std::move(files)),
          threads_(threads),
          jobGuid_(NewGuid()),
          appStateGuid_(NewGuid()) {}

    void Prepare();
    void Create();
    void Pick();
    void Work();
    void Report() const { PrintJobReport(std::cout, store_, jobGuid_); }
    void Sweep();
    ItemCounts Counts() const { return counts_; }

private:
    Store Tables() const { return {store_.connectionString, store_.provider, store_.nameQualifier}; }
    void SetState(const char* state) {
        helper_.UpdateJobStatus(store_.connectionString, store_.provider, store_.nameQualifier, jobGuid_,
                                state);
        std::cout << "The job is " << state << ".\n";
    }
    Value Statistic(StatisticsFields field);
    void ReadCounts();
    void KeepOnlyStorable();

    StoreConnection store_;
    std::vector<std::string> files_;
    int threads_;
    JobHelper helper_;
    std::string jobGuid_;
    std::string appStateGuid_;
    ItemCounts counts_;
};

/// Tables, the job type, and the container's two application states, to neither of which the demo's job
/// belongs.
void Demo::Prepare() {
    Store store = Tables();
    store.CreateDatabase();
    store.CreateTables();
    const auto replace = [&](const std::string& table, const std::string& key, const std::string& columns,
                             const std::vector<std::string>& values) {
        std::string literals;
        for (const std::string& value : values)
            literals += (literals.empty() ? "" : ", ") + store.Literal(value);
        store.Execute("DELETE FROM " + store.Table(table) + " WHERE " + key + " = " +
                      store.Literal(values.front()));
        store.Execute("INSERT INTO " + store.Table(table) + " (" + columns + ") VALUES (" + literals + ")");
    };
    replace("JobType", "jobtypeid", "jobtypeid, description, implprogid, notificationprogid",
            {kJobType, "SHA-256 of a file", FileDigest::kProgId, ""});
    replace("applicationstate", "stateid", "stateid, stateguid", {"PRODUCTION", NewGuid()});
    replace("applicationstate", "stateid", "stateid, stateguid", {"DEVELOPMENT", NewGuid()});
    KeepOnlyStorable();
}

/// A file name may be any bytes, but an identifier is text.
void Demo::KeepOnlyStorable() {
    Store store = Tables();
    const std::size_t dropped = std::erase_if(files_, [&](const std::string& file) {
        try {
            store.Literal(file);
            return false;
        } catch (const AutomationError&) {
            return true;
        }
    });
    if (dropped > 0) std::cout << dropped << " files are left out: their names are no UTF-8 text.\n";
}

void Demo::Create() {
    helper_.CreateJob(store_.connectionString, store_.provider, store_.nameQualifier, jobGuid_, kJobType,
                      "SHA-256 of every file", appStateGuid_,
                      "<parameters><parameter name=\"algorithm\">SHA-256</parameter></parameters>",
                      static_cast<std::int32_t>(files_.size()));
    helper_.CreateSimpleJobItems(store_.connectionString, store_.provider, store_.nameQualifier, jobGuid_,
                                 Array::List({files_.begin(), files_.end()}));
    std::cout << "Created job " << jobGuid_ << " with " << files_.size() << " items.\n";
    SetState("READY");
    SetState("QUEUED");
}

void Demo::Pick() {
    std::string picked;
    double rank = 0;
    helper_.GetNextJob(store_.connectionString, store_.provider, store_.nameQualifier, picked, rank);
    if (picked != jobGuid_) {
        throw AutomationError(
            error_number::kInternal, "kxjob demo",
            "GetNextJob recommends '" + picked + "': this store has other jobs that are QUEUED");
    }
    std::cout << "GetNextJob recommends it, with rank " << DoubleText(rank) << ".\n";
}

Value Demo::Statistic(StatisticsFields field) {
    const Value rows = helper_.GetJobExecutionStatistics(store_.connectionString, store_.provider,
                                                         store_.nameQualifier, jobGuid_);
    return rows.Rows().Cell(field, 0);
}

void Demo::ReadCounts() {
    counts_.succeeded = static_cast<std::size_t>(Statistic(sfSucceededItemCount).ToInt32());
    counts_.failed = static_cast<std::size_t>(Statistic(sfFailedItemCount).ToInt32());
}

void Demo::Work() {
    DurationTimer timer;
    ProgressBar bar(std::cout, isatty(STDOUT_FILENO) != 0, files_.size());
    DemoHosts hosts(store_, kJobType, threads_);
    while (hosts.AreAtWork()) {
        std::this_thread::sleep_for(kBetweenLooks);
        ReadCounts();
        bar.Update(Done(counts_), counts_.failed);
    }
    ReadCounts();
    bar.Finish(Done(counts_), counts_.failed);
    std::cout << "The job is " << Statistic(sfJobState).ToJoinedText() << ".\n";
    std::cout << threads_ << " threads in worker hosts took " << DoubleText(timer.Duration()) << " s.\n\n";
}

void Demo::Sweep() {
    helper_.RemoveIrrelevantJobsInAllContainers(store_.connectionString, store_.provider,
                                                store_.nameQualifier);
    const Value left = helper_.GetJobExecutionStatisticsAllowMissing(store_.connectionString, store_.provider,
                                                                     store_.nameQualifier, jobGuid_);
    if (!left.IsEmpty()) {
        throw AutomationError(error_number::kInternal, "kxjob demo",
                              "the job is still there after the sweep");
    }
    std::cout << "The job belonged to neither application state of its container: it is swept away.\n";
}

void RunDemo(const DemoOptions& options, int& exitStatus) {
    TemporaryFolder scratch;
    std::vector<std::string> files;
    try {
        files = FilesBelow(options.folder);
    } catch (const std::filesystem::filesystem_error& error) {
        throw UsageError("The folder " + options.folder + " cannot be read: " + error.code().message());
    }
    if (options.limit > 0 && files.size() > options.limit) files.resize(options.limit);
    const std::vector<std::string> unreadable = MakeUnreadableFiles(scratch.Path());
    files.insert(files.begin() + static_cast<std::ptrdiff_t>(files.size() / 2), unreadable.begin(),
                 unreadable.end());

    StoreConnection connection =
        options.store.NamesStore()
            ? options.store.Resolve()
            : StoreConnection{"Driver=SQLite;Database=" + (scratch.Path() / "demo.db").string(), dspSqlite,
                              "demo_"};
    Demo demo(connection, std::move(files), options.threads);
    demo.Prepare();
    demo.Create();
    demo.Pick();
    demo.Work();
    demo.Report();
    if (options.keep) {
        scratch.Keep();
        // A connection string that was given may hold a password.
        std::cout << "The job stays in "
                  << (options.store.NamesStore() ? "the given store" : connection.connectionString)
                  << ", qualifier " << connection.nameQualifier << ".\n";
    } else {
        demo.Sweep();
    }
    const bool asExpected = demo.Counts().failed >= unreadable.size() && demo.Counts().succeeded > 0;
    exitStatus = asExpected ? kDone : kFailed;
}

}  // namespace

void AddDemoCommand(CLI::App& app, int& exitStatus) {
    CLI::App* const command =
        app.add_subcommand("demo", "Take one job the whole road: the SHA-256 of every file below a folder");
    command->group(kPrograms);
    const auto options = std::make_shared<DemoOptions>();
    command->add_option("folder", options->folder, "Whose files become the items")->capture_default_str();
    command
        ->add_option("--threads", options->threads, "How many threads work on the job, in two worker hosts")
        ->check(CLI::Range(1, 64))
        ->capture_default_str();
    command->add_option("--limit", options->limit, "Take no more files than this; 0 for all");
    command->add_flag("--keep", options->keep, "Leave the job in its store, unswept");
    options->store.AddTo(*command);
    command->callback([options, &exitStatus] { RunDemo(*options, exitStatus); });
}

}  // namespace kxjob::command
