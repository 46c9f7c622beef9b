#include "manual/manual_commands.h"

#include <iostream>
#include <memory>
#include <string>

#include "command_groups.h"
#include "kxjob/job_helper.h"
#include "manual/bash_completion.h"
#include "manual/man_page.h"

namespace kxjob::command {

void AddManualFlag(CLI::App& app) {
    app.add_flag_callback("--man",
                          [&app] {
                              WriteManPage(std::cout, app, JobHelper().Version());
                              throw CLI::Success();
                          })
        ->trigger_on_parse()
        ->group("");
}

void AddCompletionCommand(CLI::App& app) {
    CLI::App* const command =
        app.add_subcommand("completion", "Print the script by which a shell completes this command");
    command->group(kSettingUp);
    const auto shell = std::make_shared<std::string>();
    command->add_option("SHELL", *shell, "Whose script")->required()->check(CLI::IsMember({"bash"}));
    command->callback([&app, shell] { WriteBashCompletion(std::cout, app); });
}

}  // namespace kxjob::command
