// Late-bound calls of the automation server, whatever their arguments: what must hold is in
// windows/invoke_server.cpp, a program that runs under Wine and is given every input. What runs there is
// counted in memory that it shares.

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include "support/coverage_size.h"
#include "support/fuzz_input.h"

namespace {

using kxjob::fuzz::kCoverageSize;
using kxjob::fuzz::Require;

/// The engine empties this section before each input, and looks at it afterwards.
__attribute__((section("__libfuzzer_extra_counters"), aligned(4096), no_sanitize("address")))
std::array<std::uint8_t, kCoverageSize>
    counters;

/// The program, as long as this one runs.
class Server {
public:
    static Server& Instance() {
        static Server server;
        return server;
    }

    void Call(const std::uint8_t* data, std::size_t size) {
        const auto length = static_cast<std::uint32_t>(size);
        Write(&length, sizeof length);
        Write(data, size);
        Await();
        char answer = 0;
        Require(read(fromServer_, &answer, 1) == 1, "the server answers");
    }

private:
    Server() {
        const std::filesystem::path folder = KXJOB_INVOKE_FOLDER;
        std::filesystem::create_directories(folder);
        const std::string map = folder / ("counters." + std::to_string(getpid()));
        const std::string configuration = folder / "quiet.conf";
        std::ofstream(configuration) << "log.level = 0\n";
        setenv("KXJOB_PIPES", "1", 1);
        setenv("KXJOB_CONFIG", ("Z:" + configuration).c_str(), 1);
        ShareCounters(map);
        Start("Z:" + map);
        std::uint8_t nothing = 0;
        Call(&nothing, 0);  // it has opened the file by then
        std::filesystem::remove(map);
    }

    /// Wine's background processes may hold the pipe open: its end tells nothing.
    void Await() const {
        constexpr int kMilliseconds = 500;
        pollfd answer{fromServer_, POLLIN, 0};
        while (poll(&answer, 1, kMilliseconds) == 0) {
            int status = 0;
            Require(waitpid(process_, &status, WNOHANG) == 0, "the server lives");
        }
    }

    static void ShareCounters(const std::string& path) {
        const int file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        Require(file >= 0 && ftruncate(file, kCoverageSize) == 0, "the counters have a file");
        Require(mmap(counters.data(), kCoverageSize, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED, file,
                     0) != MAP_FAILED,
                "the counters are shared");
        close(file);
    }

    void Start(std::string map) {
        std::array<int, 2> to{};
        std::array<int, 2> from{};
        Require(pipe2(to.data(), O_CLOEXEC) == 0 && pipe2(from.data(), O_CLOEXEC) == 0, "there are pipes");
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, to[0], STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, from[1], STDOUT_FILENO);
        std::string wine = KXJOB_WINE;
        std::string program = KXJOB_INVOKE_SERVER;
        std::array<char*, 4> arguments = {wine.data(), program.data(), map.data(), nullptr};
        Require(posix_spawn(&process_, wine.c_str(), &actions, nullptr, arguments.data(), environ) == 0,
                "Wine starts");
        posix_spawn_file_actions_destroy(&actions);
        close(to[0]);
        close(from[1]);
        toServer_ = to[1];
        fromServer_ = from[0];
    }

    void Write(const void* data, std::size_t size) {
        Require(write(toServer_, data, size) == static_cast<ssize_t>(size), "the server reads");
    }

    pid_t process_ = 0;
    int toServer_ = -1;
    int fromServer_ = -1;
};

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*count*/, char*** /*arguments*/) {
    signal(SIGPIPE, SIG_IGN);  // an end of the server is told as what does not hold
    Server::Instance();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Server::Instance().Call(data, size);
    return 0;
}
