#pragma once

#include <sys/types.h>

#include <map>
#include <string>
#include <vector>

#include "files/temporary_folder.h"

namespace kxjob::testing_support {

/// What a process left behind.
struct Finished {
    int exitStatus = -1;  // 128 and more: ended by a signal
    std::string out;
    std::string err;
};

/// Runs the kxjob command to its end; `environment` is added to the test's own.
Finished RunCommand(const TemporaryFolder& folder, const std::vector<std::string>& arguments,
                    const std::map<std::string, std::string>& environment);

/// Starts the kxjob command, with its output into these files.
pid_t StartCommand(const std::vector<std::string>& arguments,
                   const std::map<std::string, std::string>& environment, const std::string& out,
                   const std::string& err);
/// Waits for the end of a process; 128 and more: ended by a signal.
int ExitStatusOf(pid_t process);

/// The whole content of a file.
std::string ContentOf(const std::string& file);

}  // namespace kxjob::testing_support
