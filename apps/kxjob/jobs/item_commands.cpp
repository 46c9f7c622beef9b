#include <fmt/format.h>

#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>

#include "command_groups.h"
#include "jobs/job_commands.h"
#include "records/item_record.h"
#include "records/job_record.h"
#include "store/store_options.h"
#include "terminal/counted.h"
#include "terminal/printable.h"
#include "terminal/text_table.h"

namespace kxjob::command {
namespace {

/// What people call the state of an item that has none.
constexpr const char* kWaitingWord = "waiting";

struct ItemsOptions {
    StoreOptions store;
    std::string job;
    std::optional<std::string> state;
    std::optional<std::size_t> limit;
    std::size_t offset = 0;
    bool json = false;
};

struct ItemOptions {
    StoreOptions store;
    std::string item;
    bool json = false;
};

void ListItems(const ItemsOptions& options) {
    const StoreConnection connection = options.store.ResolveForJobs();
    std::vector<ItemRecord> items = ReadItems(connection, ReadJob(connection, options.job).guid);
    if (options.state) {
        const std::string state = *options.state == kWaitingWord ? "" : *options.state;
        std::erase_if(items, [&](const ItemRecord& item) { return item.state != state; });
    }
    const std::size_t found = items.size();
    const std::size_t first = std::min(options.offset, found);
    const std::size_t count = std::min(options.limit.value_or(found), found - first);
    const auto begin = items.begin() + static_cast<std::ptrdiff_t>(first);
    const std::vector<ItemRecord> shown(begin, begin + static_cast<std::ptrdiff_t>(count));

    if (options.json) {
        Json list = Json::array();
        for (const ItemRecord& item : shown) list.push_back(ToJson(item));
        std::cout << OneLine({{"items", list}, {"found", found}}) << '\n';
        return;
    }
    TextTable table({"number", "item", "state", "identifier"});
    for (const ItemRecord& item : shown) {
        table.AddCells({{std::to_string(item.sequence)},
                        {item.guid},
                        StateCell(item.state, kWaitingWord),
                        {item.identifier}});
    }
    const std::string title =
        count == found ? Counted(found, "item") : fmt::format("{} of {}", count, Counted(found, "item"));
    table.Print(std::cout, title, Palette::OfStandardOutput());
}

void ShowItem(const ItemOptions& options) {
    const ItemDetails item = ReadItem(options.store.Resolve(), options.item);
    if (options.json) {
        std::cout << OneLine(ToJson(item)) << '\n';
        return;
    }
    const TextTable::Cell state = StateCell(item.state, kWaitingWord);
    std::cout << "Item " << OnOneLine(item.guid) << '\n'
              << "  identifier  " << OnOneLine(item.identifier) << '\n'
              << "  state       " << Palette::OfStandardOutput().Paint(OnOneLine(state.text), state.tone)
              << '\n';
    if (item.started) std::cout << "  started     " << OnOneLine(*item.started) << '\n';
    if (item.ended) std::cout << "  ended       " << OnOneLine(*item.ended) << '\n';
    std::cout << '\n';
    if (!item.data.empty()) std::cout << "Data\n" << Indented(item.data, "  ") << '\n';
    if (!item.note.empty()) std::cout << "Note\n" << Indented(item.note, "  ") << '\n';
}

void AddItemsCommand(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("items", "List the items of a job in their order");
    command->group(kJobs);
    const auto options = std::make_shared<ItemsOptions>();
    command->add_option("JOB", options->job, "The GUID of the job")->type_name("")->required();
    command
        ->add_option("--state", options->state,
                     "Only items in this state, e.g. FAILED; waiting for those that have none yet")
        ->type_name("STATE");
    command->add_option("--limit", options->limit, "Show no more than these")
        ->check(CLI::NonNegativeNumber)
        ->type_name("COUNT");
    command->add_option("--offset", options->offset, "Leave out as many at the beginning")
        ->check(CLI::NonNegativeNumber)
        ->type_name("COUNT");
    command->add_flag("--json", options->json, "Print one JSON object");
    options->store.AddTo(*command);
    command->footer("Example:\n  kxjob items 6F9619FF-8B86-4D01-B42D-00CF4FC964FF --state FAILED\n");
    command->callback([options] { ListItems(*options); });
}

void AddItemCommand(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("item", "Show an item with its data and its note");
    command->group(kJobs);
    const auto options = std::make_shared<ItemOptions>();
    command->add_option("ITEM", options->item, "The GUID of the item")->type_name("")->required();
    command->add_flag("--json", options->json, "Print one JSON object");
    options->store.AddTo(*command);
    command->footer("Example:\n  kxjob item 0F8FAD5B-D9CB-469F-A165-70867728950E\n");
    command->callback([options] { ShowItem(*options); });
}

}  // namespace

void AddItemCommands(CLI::App& app) {
    AddItemsCommand(app);
    AddItemCommand(app);
}

}  // namespace kxjob::command
