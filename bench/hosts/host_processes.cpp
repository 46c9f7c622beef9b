#include "hosts/host_processes.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace kxjob::bench {
namespace {

/// The host takes the store from its configuration, so that no password stands among its arguments.
void WriteConfiguration(const BenchStore& store, const std::string& file) {
    std::ofstream(file) << "ADOConnectionString = " << store.Connection()
                        << "\nProvider = " << store.Provider()
                        << "\nNameSpaceQualifier = " << store.Qualifier()
                        << "\nlog.file = /dev/null\ncomponent." << HostProcesses::kComponent
                        << ".library = " << KXJOB_BENCH_COMPONENT << "\n";
}

pid_t Start(const std::string& configuration) {
    std::string setting = "KXJOB_CONFIG=" + configuration;
    std::array<std::string, 5> words = {"kxjob", "work", "--until-empty", "--poll", "0.05"};
    std::array<char*, 6> arguments{};
    for (std::size_t i = 0; i < words.size(); ++i) arguments[i] = words[i].data();
    std::array<char*, 2> environment = {setting.data(), nullptr};
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int error =
        posix_spawn(&process, KXJOB_COMMAND, &files, nullptr, arguments.data(), environment.data());
    posix_spawn_file_actions_destroy(&files);
    if (error != 0) throw std::system_error(error, std::generic_category(), KXJOB_COMMAND);
    return process;
}

int StatusAfter(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

}  // namespace

HostProcesses::HostProcesses(const BenchStore& store, int hosts) {
    const std::string configuration = (store.Folder() / "kxjob.conf").string();
    WriteConfiguration(store, configuration);
    for (int i = 0; i < hosts; ++i) processes_.push_back(Start(configuration));
}

HostProcesses::~HostProcesses() {
    for (const pid_t process : processes_) {
        kill(process, SIGKILL);
        StatusAfter(process);
    }
}

void HostProcesses::WaitForEnd() {
    while (!processes_.empty()) {
        const pid_t process = processes_.back();
        processes_.pop_back();
        if (StatusAfter(process) != 0) throw std::runtime_error("a worker host ended with an error");
    }
}

}  // namespace kxjob::bench
