#pragma once

#include <string>
#include <vector>

namespace kxjob {

/// What a finished program left behind.
struct ProcessResult {
    std::string ending;  // empty: exit status 0; else words such as "ended with exit status 3"
    std::string output;
    std::string errorOutput;
};

/// Runs a program to its end, without a shell, with `input` as its standard input. `words` are its path and
/// arguments; `variables` ("NAME=value") come in addition to this process's environment and in place of what
/// it has under these names. Raises 0x800A0033 when the program cannot be started.
ProcessResult RunProcess(const std::vector<std::string>& words, const std::vector<std::string>& variables,
                         const std::string& input);

}  // namespace kxjob
