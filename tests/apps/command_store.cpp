#include "apps/command_store.h"

#include <stdexcept>

#include "kxjob/array.h"

namespace kxjob::testing_support {

CommandStore::CommandStore(const ContractEngine& engine)
    : store_(engine.makeStore()),
      provider_(engine.provider),
      connectionString_(store_->ConnectionString()),
      tables_(connectionString_, provider_, "c_") {
    tables_.CreateDatabase();
    tables_.CreateTables();
    tables_.Execute(
        "INSERT INTO c_JobType (jobtypeid, description, implprogid, notificationprogid)"
        " VALUES ('TYPE', 'nightly work', 'kxTimer_83.Timer', '')");
}

std::vector<std::string> CommandStore::OnThisStore(std::vector<std::string> arguments) const {
    arguments.insert(arguments.end(), {"--connection", connectionString_, "--provider",
                                       std::to_string(provider_), "--qualifier", "c_"});
    return arguments;
}

Finished CommandStore::Run(const std::vector<std::string>& arguments, const std::string& input) const {
    return RunCommand(folder_, OnThisStore(arguments), {{"KXJOB_CONFIG", "/dev/null"}}, input);
}

nlohmann::json CommandStore::Answer(std::vector<std::string> arguments, const std::string& input) const {
    arguments.emplace_back("--json");
    const Finished finished = Run(arguments, input);
    if (finished.exitStatus != 0) throw std::runtime_error(arguments[0] + ": " + finished.err);
    return nlohmann::json::parse(finished.out);
}

std::string CommandStore::MakeJob(const std::vector<std::string>& items,
                                  const std::string& applicationState) const {
    std::vector<std::string> arguments{"create", "--type", "TYPE", "--state", applicationState};
    arguments.insert(arguments.end(), items.begin(), items.end());
    return Answer(arguments).at("job");
}

Value CommandStore::Cell(const std::string& sql) {
    return tables_.Query(sql).Rows().Cell(0, 0);
}

std::string StateGuid(char digit) {
    return std::string("{00000000-0000-4000-8000-00000000000") + digit + "}";
}

}  // namespace kxjob::testing_support
