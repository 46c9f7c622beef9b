#include "types/type_command.h"

#include <fmt/format.h>

#include <iostream>
#include <memory>

#include "command_groups.h"
#include "exit_status.h"
#include "kxjob/automation_error.h"
#include "kxjob/store.h"
#include "records/job_record.h"
#include "records/job_type_record.h"
#include "store/store_options.h"
#include "terminal/confirmation.h"
#include "terminal/counted.h"
#include "terminal/text_table.h"
#include "usage_error.h"

namespace kxjob::command {
namespace {

struct TypeAddOptions {
    StoreOptions store;
    JobTypeRecord type;
    bool replace = false;
    bool json = false;
};

struct TypeListOptions {
    StoreOptions store;
    bool json = false;
};

struct TypeRemoveOptions {
    StoreOptions store;
    std::string type;
    Confirmation confirmation;
    bool force = false;
    bool json = false;
};

Store TablesOf(const StoreConnection& connection) {
    return {connection.connectionString, connection.provider, connection.nameQualifier};
}

bool IsKnown(const StoreConnection& connection, const std::string& type) {
    return !ReadJobTypes(connection, type).empty();
}

std::string InsertStatement(Store& store, const JobTypeRecord& type) {
    return fmt::format(
        "INSERT INTO {} (jobtypeid, description, implprogid, notificationprogid) VALUES ({}, {}, {}, {})",
        store.Table("JobType"), store.Literal(type.type), store.Literal(type.description),
        store.Literal(type.component), store.Literal(type.notificationComponent));
}

std::string UpdateStatement(Store& store, const JobTypeRecord& type) {
    return fmt::format(
        "UPDATE {} SET description = {}, implprogid = {}, notificationprogid = {} WHERE jobtypeid = {}",
        store.Table("JobType"), store.Literal(type.description), store.Literal(type.component),
        store.Literal(type.notificationComponent), store.Literal(type.type));
}

void AddType(const TypeAddOptions& options) {
    if (options.type.type.empty()) throw UsageError("A job type needs a name.");
    if (options.type.component.empty()) throw UsageError("A job type needs a --component.");
    const StoreConnection connection = options.store.Resolve();
    const bool isThere = IsKnown(connection, options.type.type);
    if (isThere && !options.replace) {
        throw AutomationError(error_number::kDuplicateKey, "kxjob",
                              "There is a job type " + options.type.type + " already; --replace changes it");
    }
    Store store = TablesOf(connection);
    store.Execute(isThere ? UpdateStatement(store, options.type) : InsertStatement(store, options.type));
    if (options.json) {
        std::cout << OneLine(ToJson(options.type)) << '\n';
    } else {
        std::cout << (isThere ? "Changed" : "Added") << " job type " << options.type.type << ".\n";
    }
}

void ListTypes(const TypeListOptions& options) {
    const std::vector<JobTypeRecord> types = ReadJobTypes(options.store.Resolve());
    if (options.json) {
        Json list = Json::array();
        for (const JobTypeRecord& type : types) list.push_back(ToJson(type));
        std::cout << OneLine({{"types", list}}) << '\n';
        return;
    }
    TextTable table({"type", "component", "notified at the end", "description"});
    for (const JobTypeRecord& type : types) {
        table.AddRow({type.type, type.component, type.notificationComponent, type.description});
    }
    table.Print(std::cout, Counted(types.size(), "job type"));
}

void RemoveType(const TypeRemoveOptions& options, int& exitStatus) {
    const StoreConnection connection = options.store.ResolveForJobs();
    if (options.type.empty() || !IsKnown(connection, options.type)) {
        throw AutomationError(error_number::kNoRow, "kxjob", "There is no job type " + options.type);
    }
    const std::size_t jobs = ReadJobs(connection, {.type = options.type}).size();
    const std::string inUse =
        Counted(jobs, "job") + " of type " + options.type + (jobs == 1 ? " is" : " are") + " there";
    if (jobs > 0 && !options.force) {
        throw AutomationError(error_number::kInvalidCall, "kxjob",
                              inUse + ", so that it is not removed; --force removes it all the same");
    }
    const std::string warning = jobs > 0 ? " " + inUse + "." : "";
    if (!options.confirmation.Given("Remove job type " + options.type + "?" + warning)) {
        exitStatus = kFailed;
        return;
    }
    Store store = TablesOf(connection);
    store.Execute("DELETE FROM " + store.Table("JobType") +
                  " WHERE jobtypeid = " + store.Literal(options.type));
    if (options.json) {
        std::cout << OneLine({{"removed", options.type}, {"jobs", jobs}}) << '\n';
    } else {
        std::cout << "Removed job type " << options.type << ".\n";
    }
}

void AddTypeAddCommand(CLI::App& types) {
    CLI::App* const command = types.add_subcommand("add", "Add a job type, or change one");
    const auto options = std::make_shared<TypeAddOptions>();
    command->add_option("TYPE", options->type.type, "The name of the type")->type_name("")->required();
    command
        ->add_option("--component", options->type.component,
                     "What executes an item: a ProgID that the machines of the workers know")
        ->type_name("PROGID")
        ->required();
    command->add_option("--description", options->type.description, "What such jobs do")->type_name("TEXT");
    command
        ->add_option("--notify", options->type.notificationComponent, "What is told about the end of a job")
        ->type_name("PROGID");
    command->add_flag("--replace", options->replace, "Change a type that is there");
    command->add_flag("--json", options->json, "Print one JSON object");
    options->store.AddTo(*command);
    command->footer(
        "Example:\n  kxjob type add REPORT --component Reports_83.Writer --description 'Monthly reports'\n");
    command->callback([options] { AddType(*options); });
}

void AddTypeListCommand(CLI::App& types) {
    CLI::App* const command = types.add_subcommand("list", "List the job types");
    const auto options = std::make_shared<TypeListOptions>();
    command->add_flag("--json", options->json, "Print one JSON object");
    options->store.AddTo(*command);
    command->footer("Example:\n  kxjob type list --json\n");
    command->callback([options] { ListTypes(*options); });
}

void AddTypeRemoveCommand(CLI::App& types, int& exitStatus) {
    CLI::App* const command = types.add_subcommand("remove", "Remove a job type that no job has");
    const auto options = std::make_shared<TypeRemoveOptions>();
    command->add_option("TYPE", options->type, "The name of the type")->type_name("")->required();
    command->add_flag("--force", options->force,
                      "Remove it while jobs have it; no worker finds a next job until they are gone");
    options->confirmation.AddTo(*command);
    command->add_flag("--json", options->json, "Print one JSON object");
    options->store.AddTo(*command);
    command->footer("Example:\n  kxjob type remove REPORT --yes\n");
    command->callback([options, &exitStatus] { RemoveType(*options, exitStatus); });
}

}  // namespace

void AddTypeCommand(CLI::App& app, int& exitStatus) {
    CLI::App* const types = app.add_subcommand("type", "Add, list and remove job types");
    types->group(kSettingUp);
    types->require_subcommand(1);
    types->footer("Example:\n  kxjob type add REPORT --component Reports_83.Writer\n");
    AddTypeAddCommand(*types);
    AddTypeListCommand(*types);
    AddTypeRemoveCommand(*types, exitStatus);
}

}  // namespace kxjob::command
