#pragma once

#include <map>
#include <string>
#include <vector>

namespace kxjob::testing_support {

/// What a process left behind.
struct Finished {
    int exitStatus = -1;  // 128 and more: ended by a signal
    std::string out;
    std::string err;
};

/// A folder of its own for each test, removed with all that is in it.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    std::string File(const std::string& name) const { return path_ + "/" + name; }

private:
    std::string path_;
};

/// Runs the kxjob command to its end; `environment` is added to the test's own.
Finished RunCommand(const TemporaryFolder& folder, const std::vector<std::string>& arguments,
                    const std::map<std::string, std::string>& environment);

/// The whole content of a file.
std::string ContentOf(const std::string& file);

}  // namespace kxjob::testing_support
