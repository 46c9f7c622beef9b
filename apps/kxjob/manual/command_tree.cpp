#include "manual/command_tree.h"

#include <algorithm>

namespace kxjob::command {

std::vector<const CLI::App*> ShownCommands(const CLI::App& app) {
    std::vector<const CLI::App*> commands =
        app.get_subcommands([](const CLI::App* command) { return !command->get_group().empty(); });
    std::ranges::sort(commands, {}, &CLI::App::get_name);
    return commands;
}

std::vector<const CLI::Option*> ShownOptions(const CLI::App& app) {
    return app.get_options([](const CLI::Option* option) { return !option->get_group().empty(); });
}

std::string NameOf(const CLI::Option& option) {
    return option.get_positional() ? option.get_name(true) : "--" + option.get_lnames().front();
}

bool TakesValue(const CLI::Option& option) {
    return option.get_items_expected_max() > 0;
}

std::string KindOf(const CLI::Option& option) {
    const std::string kind = option.get_type_name();
    return kind.substr(0, kind.find(':'));
}

std::vector<std::string> ChoicesOf(const CLI::Option& option) {
    const std::string kind = option.get_type_name();
    const std::size_t begin = kind.find('{');
    const std::size_t end = kind.find('}', begin);
    if (begin == std::string::npos || end == std::string::npos) return {};
    return CLI::detail::split(kind.substr(begin + 1, end - begin - 1), ',');
}

}  // namespace kxjob::command
