#include "insight/stats/gnuplot.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <system_error>

namespace kxjob::command {
namespace {

constexpr std::size_t kReadAtOnce = 4096;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
/// A file without a name, gone with its owner.
using ScratchFile = std::unique_ptr<std::FILE, CloseFile>;

ScratchFile MakeScratchFile() {
    ScratchFile file(std::tmpfile());
    if (file == nullptr) throw std::system_error(errno, std::generic_category(), "a temporary file");
    fcntl(fileno(file.get()), F_SETFD, FD_CLOEXEC);
    return file;
}

std::string ContentOf(std::FILE* file) {
    std::string content;
    std::array<char, kReadAtOnce> piece{};
    std::rewind(file);
    while (const std::size_t length = std::fread(piece.data(), 1, piece.size(), file))
        content.append(piece.data(), length);
    return content;
}

class SpawnActions {
public:
    SpawnActions() { posix_spawn_file_actions_init(&actions_); }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;
    ~SpawnActions() { posix_spawn_file_actions_destroy(&actions_); }

    posix_spawn_file_actions_t* Get() { return &actions_; }

private:
    posix_spawn_file_actions_t actions_{};
};

}  // namespace

std::optional<std::string> RunGnuplot(const std::string& script) {
    const ScratchFile in = MakeScratchFile();
    const ScratchFile out = MakeScratchFile();
    const ScratchFile err = MakeScratchFile();
    std::fwrite(script.data(), 1, script.size(), in.get());
    std::rewind(in.get());

    SpawnActions redirected;
    posix_spawn_file_actions_adddup2(redirected.Get(), fileno(in.get()), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(redirected.Get(), fileno(out.get()), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(redirected.Get(), fileno(err.get()), STDERR_FILENO);
    std::string program = "gnuplot";
    std::string withoutOwnSettings = "-d";
    const std::array<char*, 3> arguments{program.data(), withoutOwnSettings.data(), nullptr};
    pid_t process = 0;
    const int problem =
        posix_spawnp(&process, program.c_str(), redirected.Get(), nullptr, arguments.data(), environ);
    if (problem == ENOENT) return std::nullopt;
    if (problem != 0) throw std::system_error(problem, std::generic_category(), program);

    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw std::runtime_error("gnuplot could not draw: " + ContentOf(err.get()));
    return ContentOf(out.get());
}

}  // namespace kxjob::command
