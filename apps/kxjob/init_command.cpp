#include "init_command.h"

#include <array>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "command_groups.h"
#include "kxjob/store.h"
#include "store/store_options.h"

namespace kxjob::command {
namespace {

constexpr std::array kTables{"job",        "JobItem",      "jobtask",          "JobType",
                             "systemflag", "adminhistory", "applicationstate", "subsystem"};

struct InitOptions {
    StoreOptions store;
    bool json = false;
    bool printScript = false;
};

void PrintScript(const StoreOptions& options) {
    const StoreConnection connection = options.ResolveForScript();
    std::cout
        << Store(connection.connectionString, connection.provider, connection.nameQualifier).CreationScript();
}

void Init(const InitOptions& options) {
    if (options.printScript) return PrintScript(options.store);
    const StoreConnection connection = options.store.Resolve();
    Store store(connection.connectionString, connection.provider, connection.nameQualifier);
    store.CreateDatabase();
    store.CreateTables();

    auto tables = nlohmann::ordered_json::array();
    for (const char* table : kTables) tables.push_back(store.Table(table));
    if (options.json) {
        std::cout << nlohmann::ordered_json{{"tables", tables}}.dump() << '\n';
    } else {
        std::cout << "The store has these tables:\n";
        for (const auto& table : tables) std::cout << "  " << table.get<std::string>() << '\n';
    }
}

}  // namespace

void AddInitCommand(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("init", "Make the tables of a store; safe to run twice");
    command->group(kSettingUp);
    const auto options = std::make_shared<InitOptions>();
    options->store.AddTo(*command);
    auto* const json = command->add_flag("--json", options->json, "Print one JSON object");
    command
        ->add_flag("--print-script", options->printScript,
                   "Print the statements and run none; --provider is enough for it")
        ->excludes(json);
    command->callback([options] { Init(*options); });
}

}  // namespace kxjob::command
