#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace kxjob::command {

/// The question that stands before what cannot be taken back, and --yes, which answers it in advance.
class Confirmation {
public:
    void AddTo(CLI::App& command);
    /// Whether to go on. Asks `question`, e.g. "Remove job ... with 20 items?", on the terminal: "y" and
    /// "yes" go on, and any other answer is told to have changed nothing. Raises UsageError when nobody can
    /// be asked: standard input or standard error is no terminal.
    bool Given(const std::string& question) const;

private:
    bool isGivenBefore_ = false;
};

}  // namespace kxjob::command
