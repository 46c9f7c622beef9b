#include "apps/command_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace kxjob::testing_support {

std::vector<std::string> CommandWith(const std::vector<std::string>& arguments) {
    std::vector<std::string> all{KXJOB_COMMAND};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return all;
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> OwnEnvironmentWith(const std::map<std::string, std::string>& added) {
    std::vector<std::string> all;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string text = *variable;
        if (!added.contains(text.substr(0, text.find('=')))) all.push_back(text);
    }
    for (const auto& [name, value] : added) {
        std::string text = name;
        text.append("=").append(value);
        all.push_back(std::move(text));
    }
    return all;
}

int ExitStatusOf(int status) {
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

pid_t StartCommand(const std::vector<std::string>& arguments,
                   const std::map<std::string, std::string>& environment, const ProcessFiles& files) {
    std::vector<std::string> all = CommandWith(arguments);
    std::vector<std::string> variables = OwnEnvironmentWith(environment);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    constexpr int kAnew = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, files.in.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, files.out.c_str(), kAnew, S_IRUSR | S_IWUSR);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, files.err.c_str(), kAnew, S_IRUSR | S_IWUSR);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    pid_t process = 0;
    const int problem = posix_spawn(&process, all[0].c_str(), &actions, &attributes, Pointers(all).data(),
                                    Pointers(variables).data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (problem != 0) throw std::system_error(problem, std::generic_category(), all[0]);
    return process;
}

int WaitForEnd(pid_t process) {
    int status = 0;
    if (waitpid(process, &status, 0) != process) throw std::system_error(errno, std::generic_category());
    return ExitStatusOf(status);
}

Finished RunCommand(const TemporaryFolder& folder, const std::vector<std::string>& arguments,
                    const std::map<std::string, std::string>& environment, const std::string& input) {
    const ProcessFiles files{folder.File("standard output"), folder.File("standard error"),
                             folder.File("standard input")};
    std::ofstream(files.in, std::ios::binary) << input;
    const int exitStatus = WaitForEnd(StartCommand(arguments, environment, files));
    return {exitStatus, ContentOf(files.out), ContentOf(files.err)};
}

std::string ContentOf(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw std::runtime_error("cannot read " + file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace kxjob::testing_support
