#include "terminal/confirmation.h"

#include <unistd.h>

#include <iostream>

#include "terminal/printable.h"
#include "usage_error.h"

namespace kxjob::command {

void Confirmation::AddTo(CLI::App& command) {
    command.add_flag("--yes,-y", isGivenBefore_, "Do not ask; needed where there is no terminal to ask on");
}

bool Confirmation::Given(const std::string& question) const {
    if (isGivenBefore_) return true;
    const std::string shown = OnOneLine(question);
    if (isatty(STDIN_FILENO) == 0 || isatty(STDERR_FILENO) == 0) {
        throw UsageError(shown + " There is no terminal to ask on: --yes is the answer.");
    }
    std::cerr << shown << " [y/N] " << std::flush;
    std::string answer;
    std::getline(std::cin, answer);
    if (answer == "y" || answer == "Y" || answer == "yes" || answer == "YES" || answer == "Yes") return true;
    std::cerr << "Nothing has been changed.\n";
    return false;
}

}  // namespace kxjob::command
