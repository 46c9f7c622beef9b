#include "apps/insight/insight_store.h"

#include <stdexcept>
#include <utility>

namespace kxjob::testing_support {
namespace {

using Columns = std::vector<std::pair<std::string, Value>>;

void InsertRow(Store& store, const std::string& table, const Columns& row) {
    std::string columns;
    std::string literals;
    for (const auto& [column, value] : row) {
        const std::string separator = columns.empty() ? "" : ", ";
        columns += separator + column;
        literals += separator + store.Literal(value);
    }
    store.Execute("INSERT INTO " + store.Table(table) + " (" + columns + ") VALUES (" + literals + ")");
}

Value OrNull(const std::string& text) {
    return text.empty() ? Value(Null()) : Value(text);
}

}  // namespace

InsightStore::InsightStore() {
    store_.CreateDatabase();
    store_.CreateTables();
    InsertRow(store_, "JobType", {{"jobtypeid", "CAN"}, {"implprogid", "kxTimer_83.Timer"}});
    InsertRow(store_, "JobType", {{"jobtypeid", "CANNOT"}, {"implprogid", "No_83.Thing"}});
}

void InsightStore::AddJob(const std::string& guid, const std::string& state, const std::string& type,
                          int totalItems) {
    InsertRow(store_, "job",
              {{"jobguid", guid},
               {"jobtypeid", type},
               {"description", "the job " + guid},
               {"jobstateid", state},
               {"totalitemcount", totalItems}});
}

void InsightStore::AddTask(const std::string& guid, const std::string& job, const std::string& started,
                           const std::string& claim, const std::string& lock) {
    InsertRow(store_, "jobtask",
              {{"jobtaskguid", guid},
               {"jobguid", job},
               {"machine", "elsewhere"},
               {"processid", 71},
               {"jobtaskstateid", "RUNNING"},
               {"startdt", OrNull(started)},
               {"enddt", OrNull(claim)},
               {"lockguid", OrNull(lock)}});
}

void InsightStore::AddItem(const std::string& guid, const std::string& job, int sequence,
                           const std::string& state, const std::string& started, const std::string& ended) {
    InsertRow(store_, "JobItem",
              {{"jobitemguid", guid},
               {"jobguid", job},
               {"sequence", sequence},
               {"jobitemstateid", OrNull(state)},
               {"startdt", OrNull(started)},
               {"enddt", OrNull(ended)}});
}

std::vector<std::string> InsightStore::Arguments(std::vector<std::string> arguments) const {
    arguments.insert(arguments.end(), {"--connection", connection_, "--qualifier", "k_"});
    return arguments;
}

Finished InsightStore::Run(std::vector<std::string> arguments) {
    return RunCommand(folder_, Arguments(std::move(arguments)), {{"KXJOB_CONFIG", "/dev/null"}});
}

nlohmann::json InsightStore::Json(std::vector<std::string> arguments) {
    arguments.emplace_back("--json");
    const Finished finished = Run(std::move(arguments));
    nlohmann::json json = nlohmann::json::parse(finished.out, nullptr, false);
    if (json.is_discarded()) throw std::runtime_error("no JSON: " + finished.out + finished.err);
    return json;
}

}  // namespace kxjob::testing_support
