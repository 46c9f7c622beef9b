#include <iostream>
#include <limits>
#include <memory>

#include "command_groups.h"
#include "jobs/job_commands.h"
#include "kxjob/automation_error.h"
#include "records/history_record.h"
#include "store/store_options.h"
#include "terminal/counted.h"
#include "terminal/text_table.h"

namespace kxjob::command {
namespace {

struct HistoryOptions {
    StoreOptions store;
    std::string job;
    std::int32_t limit = 50;
    bool json = false;
};

void History(const HistoryOptions& options) {
    const auto history = ReadHistory(options.store.Resolve(), options.job, options.limit);
    if (!history) {
        throw AutomationError(error_number::kNoRow, "kxjob",
                              "This store has no administration history: kxjob init makes its table");
    }
    if (options.json) {
        Json list = Json::array();
        for (const HistoryRecord& record : *history) list.push_back(ToJson(record));
        std::cout << OneLine({{"history", list}}) << '\n';
        return;
    }
    TextTable table({"written", "action", "user", "detail"});
    for (const HistoryRecord& record : *history) {
        table.AddRow({record.written, record.action, record.user, record.detail});
    }
    table.Print(std::cout, Counted(history->size(), "action"));
}

}  // namespace

void AddHistoryCommand(CLI::App& app) {
    CLI::App* const command =
        app.add_subcommand("history", "Show what the administration history tells, the newest first");
    command->group(kUpkeep);
    const auto options = std::make_shared<HistoryOptions>();
    command->add_option("--job", options->job, "Only of this job, which may be gone")->type_name("JOB");
    command->add_option("--limit", options->limit, "Show no more than these")
        ->check(CLI::Range(1, std::numeric_limits<std::int32_t>::max()))
        ->type_name("COUNT")
        ->capture_default_str();
    command->add_flag("--json", options->json, "Print one JSON object");
    options->store.AddTo(*command);
    command->footer("Example:\n  kxjob history --job 6F9619FF-8B86-4D01-B42D-00CF4FC964FF\n");
    command->callback([options] { History(*options); });
}

}  // namespace kxjob::command
