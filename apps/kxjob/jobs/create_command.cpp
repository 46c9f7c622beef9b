#include <unistd.h>

#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <optional>

#include "command_groups.h"
#include "jobs/item_input.h"
#include "jobs/job_commands.h"
#include "jobs/job_creation.h"
#include "kxjob/automation_error.h"
#include "kxjob/caller_texts.h"
#include "records/application_state_record.h"
#include "records/guid_text.h"
#include "records/job_record.h"
#include "store/store_options.h"
#include "terminal/counted.h"
#include "terminal/progress_bar.h"
#include "usage_error.h"

namespace kxjob::command {
namespace {

/// From how many items on a person wants to see that something happens.
constexpr std::size_t kLongInput = 1000;

struct CreateOptions {
    StoreOptions store;
    NewJob job;
    std::optional<std::string> parametersFile;
    std::string applicationState;
    std::vector<std::string> identifiers;
    std::optional<std::string> itemFile;
    ItemFormat format = ItemFormat::kByFirstCharacter;
    bool json = false;
};

std::ifstream Open(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw UsageError("The file " + file + " cannot be read.");
    return stream;
}

std::vector<std::string> RemainingIdentifiers(const CLI::App& command) {
    std::vector<std::string> identifiers = command.remaining();
    for (const std::string& identifier : identifiers) {
        if (identifier.starts_with('-')) {
            throw UsageError(identifier +
                             " is no option of create; an item of that name can stand in --items.");
        }
    }
    return identifiers;
}

std::vector<NewItem> ReadGivenItems(const CreateOptions& options, Store& store) {
    if (options.itemFile && !options.identifiers.empty()) {
        throw UsageError("Items are given either by name or with --items.");
    }
    if (!options.itemFile) return ItemsOf(options.identifiers, store);
    if (*options.itemFile == "-") return ReadItemLines(std::cin, options.format, store);
    std::ifstream file = Open(*options.itemFile);
    return ReadItemLines(file, options.format, store);
}

std::string ReadParameters(const CreateOptions& options) {
    if (!options.parametersFile) return options.job.parameters;
    std::ifstream file = Open(*options.parametersFile);
    return {std::istreambuf_iterator<char>(file), {}};
}

void RequireStorable(Store& store, const std::string& text, const char* what) {
    try {
        store.Literal(text);
    } catch (const AutomationError& error) {
        throw UsageError(std::string(what) + " cannot be stored: " + error.Description());
    }
}

/// The whole job as the options describe it; nothing has been changed in the store so far.
NewJob PlannedJob(const CreateOptions& options, const StoreConnection& connection) {
    Store store(connection.connectionString, connection.provider, connection.nameQualifier);
    NewJob job = options.job;
    job.items = ReadGivenItems(options, store);
    if (job.items.empty()) {
        throw UsageError("A job needs an item: name some, or a file of them with --items FILE.");
    }
    job.parameters = ReadParameters(options);
    RequireStorable(store, job.description, "The description");
    RequireStorable(store, job.parameters, "The parameters");
    const ApplicationStates states(connection);
    job.applicationState = options.applicationState.empty() ? states.GuidOf("PRODUCTION")
                                                            : states.Meant(options.applicationState);
    job.guid = job.guid.empty() ? NewGuid() : GuidText(job.guid);
    return job;
}

void Create(const CreateOptions& options) {
    const StoreConnection connection = options.store.ResolveForJobs();
    const NewJob job = PlannedJob(options, connection);
    const std::vector<JobRecord> earlier =
        ReadJobs(connection, {.type = job.type, .applicationState = job.applicationState});

    const bool isWatched = isatty(STDERR_FILENO) != 0 && job.items.size() >= kLongInput;
    ProgressBar bar(std::cerr, true, job.items.size());
    CreateWholeJob(connection, job, [&](std::size_t done) {
        if (isWatched) bar.Update(done, 0);
    });
    if (isWatched) bar.Finish(job.items.size(), 0);

    Json replaced = Json::array();
    for (const JobRecord& gone : earlier) {
        replaced.push_back(gone.guid);
        std::cerr << "It replaces job " << gone.guid << " of the same type and application state, which was "
                  << gone.state << ".\n";
    }
    if (options.json) {
        std::cout << OneLine({{"job", job.guid},
                              {"state", job.leaveCreating ? "CREATING" : "QUEUED"},
                              {"items", job.items.size()},
                              {"applicationState", job.applicationState},
                              {"replaced", replaced}})
                  << '\n';
    } else {
        std::cout << job.guid << '\n';
    }
}

void AddItemOptions(CLI::App& command, CreateOptions& options) {
    // The parser would take an identifier such as "[a,b]" apart: ITEM is there for the help, never takes
    // anything, and the identifiers are what remains.
    static std::vector<std::string> nothing;
    command.add_option("ITEM", nothing, "The identifiers of the items, in their order")
        ->type_name("")
        ->expected(0, -1)
        ->allow_extra_args(false);
    command.allow_extras();
    command
        .add_option(
            "--items", options.itemFile,
            "A file with one identifier a line, or one JSON object with \"identifier\" and \"data\" a "
            "line; - is standard input")
        ->type_name("FILE");
    static const std::map<std::string, ItemFormat> kFormats{{"lines", ItemFormat::kLines},
                                                            {"jsonl", ItemFormat::kJsonLines}};
    command
        .add_option_function<std::string>(
            "--format", [&options](const std::string& name) { options.format = kFormats.at(name); },
            "How the file is written; else its first character says it: {")
        ->check(CLI::IsMember({"lines", "jsonl"}))
        ->type_name("FORMAT");
}

}  // namespace

void AddCreateCommand(CLI::App& app) {
    CLI::App* const command =
        app.add_subcommand("create", "Create a job with its items and queue it; prints its GUID");
    command->group(kJobs);
    const auto options = std::make_shared<CreateOptions>();
    command->add_option("--type", options->job.type, "The job type")->type_name("TYPE")->required();
    AddItemOptions(*command, *options);
    command->add_option("--description", options->job.description, "What this job does")->type_name("TEXT");
    CLI::Option* const parameters =
        command->add_option("--parameters", options->job.parameters, "The parameters document")
            ->type_name("XML");
    command->add_option("--parameters-file", options->parametersFile, "A file that holds it")
        ->type_name("FILE")
        ->excludes(parameters);
    command
        ->add_option(
            "--state", options->applicationState,
            "The application state of the job, by GUID or name; PRODUCTION when left out. Earlier jobs of "
            "the same type and state are removed")
        ->type_name("STATE");
    command->add_option("--guid", options->job.guid, "The job's key; a new one when left out")
        ->type_name("GUID");
    command->add_flag("--leave-creating", options->job.leaveCreating,
                      "Leave the job in state CREATING: no worker begins with it");
    command->add_flag("--json", options->json, "Print one JSON object");
    options->store.AddTo(*command);
    command->footer(
        "Examples:\n  kxjob create --type REPORT north south west\n"
        "  find /data -name '*.csv' | kxjob create --type IMPORT --items -\n");
    command->callback([options, command] {
        options->identifiers = RemainingIdentifiers(*command);
        Create(*options);
    });
}

}  // namespace kxjob::command
