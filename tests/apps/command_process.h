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

/// Runs the kxjob command to its end; `environment` is added to the test's own, and `input` is what it reads
/// from its standard input.
Finished RunCommand(const TemporaryFolder& folder, const std::vector<std::string>& arguments,
                    const std::map<std::string, std::string>& environment, const std::string& input = {});

/// The kxjob command of this build with its arguments, as a new process takes them.
std::vector<std::string> CommandWith(const std::vector<std::string>& arguments);
/// The test's own environment and what is added to it, as a new process takes them: NAME=value.
std::vector<std::string> OwnEnvironmentWith(const std::map<std::string, std::string>& added);
/// Pointers to the texts, and null at the end.
std::vector<char*> Pointers(std::vector<std::string>& texts);
/// The exit status as in Finished, of the status that waiting for a process gives.
int ExitStatusOf(int status);

/// Where a process's output goes to, and its input comes from.
struct ProcessFiles {
    std::string out;
    std::string err;
    std::string in = "/dev/null";
};

/// Starts the kxjob command in a process group of its own.
pid_t StartCommand(const std::vector<std::string>& arguments,
                   const std::map<std::string, std::string>& environment, const ProcessFiles& files);
/// Waits for the end of a process; gives its exit status as in Finished.
int WaitForEnd(pid_t process);

/// The whole content of a file.
std::string ContentOf(const std::string& file);

}  // namespace kxjob::testing_support
