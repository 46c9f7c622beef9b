#pragma once

#include <filesystem>
#include <string>

namespace kxjob::testing_support {

/// A folder of its own for one test, removed with everything in it.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    std::filesystem::path Path(const std::string& name) const { return path_ / name; }
    std::string File(const std::string& name) const { return Path(name).string(); }
    /// Lets every user in.
    void OpenToAll() const;

private:
    std::filesystem::path path_;
};

}  // namespace kxjob::testing_support
