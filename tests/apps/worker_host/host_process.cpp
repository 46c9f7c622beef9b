#include "apps/worker_host/host_process.h"

#include <csignal>
#include <utility>

#include "apps/command_process.h"

namespace kxjob::testing_support {

std::string WorkComponentLine() {
    return std::string("component.Work_83.Worker.library = ") + KXJOB_WORK_COMPONENT + "\n";
}

HostProcess::HostProcess(const TemporaryFolder& folder, const std::string& name, const StoreConnection& store,
                         std::vector<std::string> options)
    : out_(folder.File("out of " + name)), err_(folder.File("err of " + name)) {
    const std::vector<std::string> arguments{"work",
                                             "--connection",
                                             store.connectionString,
                                             "--provider",
                                             std::to_string(store.provider),
                                             "--qualifier",
                                             store.nameQualifier};
    options.insert(options.begin(), arguments.begin(), arguments.end());
    process_ = StartCommand(options, {{"KXJOB_CONFIG", folder.File("kxjob.conf")}}, {out_, err_});
}

HostProcess::HostProcess(HostProcess&& other) noexcept
    : out_(std::move(other.out_)), err_(std::move(other.err_)), process_(std::exchange(other.process_, 0)) {}

HostProcess::~HostProcess() {
    if (process_ == 0) return;
    kill(process_, SIGKILL);
    WaitForEnd(process_);
}

void HostProcess::Send(int signal) const {
    kill(process_, signal);
}

void HostProcess::SendToGroup(int signal) const {
    kill(-process_, signal);
}

int HostProcess::ExitStatus() {
    return WaitForEnd(std::exchange(process_, 0));
}

std::string HostProcess::Out() const {
    return ContentOf(out_);
}

std::string HostProcess::Err() const {
    return ContentOf(err_);
}

}  // namespace kxjob::testing_support
