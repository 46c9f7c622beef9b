#include <fmt/format.h>

#include <iostream>
#include <memory>

#include "command_groups.h"
#include "jobs/job_commands.h"
#include "kxjob/caller_texts.h"
#include "kxjob/store.h"
#include "records/application_state_record.h"
#include "records/item_count_record.h"
#include "records/job_pace.h"
#include "records/job_record.h"
#include "records/job_type_record.h"
#include "records/optional_json.h"
#include "records/task_record.h"
#include "store/store_options.h"
#include "terminal/printable.h"
#include "terminal/text_table.h"

namespace kxjob::command {
namespace {

struct ShowOptions {
    StoreOptions store;
    std::string job;
    bool json = false;
};

/// All that there is to show.
struct JobView {
    JobRecord job;
    std::string applicationStateName;
    std::vector<JobTypeRecord> type;  // one, or none
    std::optional<JobPace> pace;
    std::vector<StateCount> itemStates;
    std::vector<OwnerCount> owners;
    std::vector<TaskRecord> tasks;
};

/// The time by the clock that the row's times are compared with.
Moment Now(const StoreConnection& connection) {
    Store store(connection.connectionString, connection.provider, connection.nameQualifier);
    const std::optional<Moment> ofStore = ParseIsoTime(store.NowISODateTime());
    return ofStore.value_or(ParseIsoTime(NowISODateTime()).value_or(Moment()));
}

JobView Read(const StoreConnection& connection, const std::string& typed) {
    JobView view;
    view.job = ReadJob(connection, typed);
    const std::string& guid = view.job.guid;
    view.applicationStateName = ApplicationStates(connection).NameOf(view.job.applicationState);
    if (!view.job.type.empty()) view.type = ReadJobTypes(connection, view.job.type);
    view.pace = PaceOf(view.job, Now(connection));
    view.itemStates = CountItemsByState(connection, guid);
    view.owners = CountItemsByOwner(connection, guid);
    view.tasks = ReadTasks(connection, guid);
    return view;
}

Json PaceJson(const std::optional<JobPace>& pace) {
    if (!pace) return nullptr;
    return {{"itemsPerSecond", pace->itemsPerSecond},
            {"meanIncrement", pace->meanIncrement},
            {"variance", pace->variance ? Json(*pace->variance) : Json(nullptr)},
            {"estimatedEnd", pace->estimatedEnd ? Json(IsoTime(*pace->estimatedEnd)) : Json(nullptr)}};
}

template <typename Record>
Json ListJson(const std::vector<Record>& records) {
    Json list = Json::array();
    for (const Record& record : records) list.push_back(ToJson(record));
    return list;
}

Json ViewJson(const JobView& view) {
    Json json = ToJson(view.job);
    json["applicationStateName"] =
        view.applicationStateName.empty() ? Json(nullptr) : Json(view.applicationStateName);
    json["percentDone"] = PercentDone(view.job);
    json["pace"] = PaceJson(view.pace);
    json["itemStates"] = ListJson(view.itemStates);
    json["owners"] = ListJson(view.owners);
    json["tasks"] = ListJson(view.tasks);
    return json;
}

std::string TypeText(const JobView& view) {
    if (view.type.empty()) return view.job.type + ", which is no job type of this store";
    const JobTypeRecord& type = view.type.front();
    std::string text = type.type + ", executed by " + type.component;
    if (!type.notificationComponent.empty()) text += ", end told to " + type.notificationComponent;
    return text;
}

/// One line a fact; what is not known is left out.
void PrintFacts(const JobView& view, const Palette& palette) {
    const JobRecord& job = view.job;
    const auto print = [](const std::string& name, const std::string& text) {
        if (!text.empty()) std::cout << fmt::format("  {:<19}{}\n", name, text);
    };
    std::cout << "Job " << OnOneLine(job.guid) << '\n';
    print("description", OnOneLine(job.description));
    print("type", OnOneLine(TypeText(view)));
    print("state", palette.Paint(OnOneLine(job.state), ToneOf(job.state)));
    print("application state",
          OnOneLine(job.applicationState +
                    (view.applicationStateName.empty() ? "" : ", " + view.applicationStateName)));
    print("progress",
          fmt::format("{:.0f} %, {} of {} items ended, {} of them failed; the next is number {}",
                      PercentDone(job), EndedItems(job), job.totalItems, job.failedItems, job.nextItem));
    print("started", job.started.value_or(""));
    print("last item ended", job.lastCompletion.value_or(""));
    if (view.pace) {
        const JobPace& pace = *view.pace;
        print("rate", fmt::format("{:.4g} items/s, {} an item on average", pace.itemsPerSecond,
                                  DurationInWords(pace.meanIncrement)));
        if (pace.variance) {
            print("variance", fmt::format("{:.4g} s² of the time between two ends of items", *pace.variance));
        }
        if (pace.estimatedEnd) print("estimated end", IsoTime(*pace.estimatedEnd));
    }
    std::cout << '\n';
}

void PrintText(const std::string& title, const std::string& text) {
    if (!text.empty()) std::cout << title << '\n' << Indented(text, "  ") << '\n';
}

void Print(const JobView& view) {
    const Palette palette = Palette::OfStandardOutput();
    PrintFacts(view, palette);
    PrintText("Parameters", view.job.parameters);

    TextTable states({"state", "items"});
    for (const StateCount& count : view.itemStates) {
        states.AddCells({StateCell(count.state, "waiting"), {std::to_string(count.items)}});
    }
    states.Print(std::cout, "Items by state", palette);

    TextTable owners({"machine", "state", "items"});
    for (const OwnerCount& count : view.owners) {
        owners.AddCells({{count.machine}, StateCell(count.state), {std::to_string(count.items)}});
    }
    if (!view.owners.empty()) owners.Print(std::cout, "Items by machine", palette);

    TextTable tasks({"task", "state", "description", "machine", "process", "thread", "started", "ended"});
    for (const TaskRecord& task : view.tasks) {
        tasks.AddCells({{task.guid},
                        StateCell(task.state),
                        {task.description},
                        {task.machine},
                        {std::to_string(task.process)},
                        {std::to_string(task.thread)},
                        {task.started.value_or("")},
                        {task.state == "RUNNING" ? "" : task.ended.value_or("")}});
    }
    if (!view.tasks.empty()) tasks.Print(std::cout, "Tasks", palette);
    PrintText("Failure note", view.job.failureNote);
}

void Show(const ShowOptions& options) {
    const JobView view = Read(options.store.ResolveForJobs(), options.job);
    if (options.json) {
        std::cout << OneLine(ViewJson(view)) << '\n';
    } else {
        Print(view);
    }
}

}  // namespace

void AddShowCommand(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("show", "Show a job: counters, pace, items, tasks, notes");
    command->group(kJobs);
    const auto options = std::make_shared<ShowOptions>();
    command->add_option("JOB", options->job, "The GUID of the job")->type_name("")->required();
    command->add_flag("--json", options->json, "Print one JSON object");
    options->store.AddTo(*command);
    command->footer("Example:\n  kxjob show 6F9619FF-8B86-4D01-B42D-00CF4FC964FF\n");
    command->callback([options] { Show(*options); });
}

}  // namespace kxjob::command
