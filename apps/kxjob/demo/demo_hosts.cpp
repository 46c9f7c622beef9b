#include "demo/demo_hosts.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <system_error>

#include "kxjob/automation_error.h"

namespace kxjob::command {
namespace {

constexpr const char* kThisProgram = "/proc/self/exe";

}  // namespace

DemoHosts::DemoHosts(const StoreConnection& store, const std::string& jobType, int threads) {
    const int second = threads / 2;
    Start(store, jobType, threads - second);
    if (second > 0) Start(store, jobType, second);
}

DemoHosts::~DemoHosts() {
    for (const pid_t process : processes_) kill(process, SIGTERM);
    for (const pid_t process : processes_) waitpid(process, nullptr, 0);
}

void DemoHosts::Start(const StoreConnection& store, const std::string& jobType, int threads) {
    std::vector<std::string> words{"kxjob",
                                   "work",
                                   "--until-empty",
                                   "--poll",
                                   "0.1",
                                   "--type",
                                   jobType,
                                   "--threads",
                                   std::to_string(threads),
                                   "--connection",
                                   store.connectionString,
                                   "--provider",
                                   std::to_string(store.provider),
                                   "--qualifier",
                                   store.nameQualifier};
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);  // the bar is here
    pid_t process = 0;
    const int problem = posix_spawn(&process, kThisProgram, &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (problem != 0) throw std::system_error(problem, std::generic_category(), "No worker host");
    processes_.push_back(process);
}

bool DemoHosts::AreAtWork() {
    bool hasFailed = false;
    std::erase_if(processes_, [&](pid_t process) {
        int status = 0;
        if (waitpid(process, &status, WNOHANG) == 0) return false;
        hasFailed |= status != 0;
        return true;
    });
    if (hasFailed) throw AutomationError(error_number::kInternal, "kxjob demo", "a worker host has failed");
    return !processes_.empty();
}

}  // namespace kxjob::command
