#pragma once

#include <sys/types.h>

#include <map>
#include <string>
#include <vector>

#include "files/temporary_folder.h"
#include "kxjob/configured_connection.h"

namespace kxjob::testing_support {

/// The line of a configuration that lets "Work_83.Worker" come from the tests' shared library.
std::string WorkComponentLine();

/// A `kxjob work` that runs beside the test. Ends with it.
class HostProcess {
public:
    /// `name` tells its output files from those of other hosts in the folder.
    HostProcess(const TemporaryFolder& folder, const std::string& name, const StoreConnection& store,
                std::vector<std::string> options);
    HostProcess(HostProcess&& other) noexcept;
    HostProcess(const HostProcess&) = delete;
    HostProcess& operator=(const HostProcess&) = delete;
    ~HostProcess();

    pid_t Process() const { return process_; }
    void Send(int signal) const;
    /// As a terminal does it: to the host and to what it has started, unless that is in another group.
    void SendToGroup(int signal) const;
    /// Waits for its end; 128 and more: ended by a signal.
    int ExitStatus();
    std::string Out() const;
    std::string Err() const;

private:
    std::string out_;
    std::string err_;
    pid_t process_ = 0;
};

}  // namespace kxjob::testing_support
