#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace kxjob::command {

/// Every regular file below a folder, sorted; folders that cannot be entered are passed over.
/// Raises std::filesystem::filesystem_error when `folder` itself cannot be read.
std::vector<std::string> FilesBelow(const std::filesystem::path& folder);

/// Puts two things into `folder` that nobody can read as a file, not even root: a link to nothing, and a
/// folder.
std::vector<std::string> MakeUnreadableFiles(const std::filesystem::path& folder);

/// A new folder of this process, removed with all that is in it.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::filesystem::path& Path() const { return path_; }
    /// Leaves the folder where it is.
    void Keep() { keep_ = true; }

private:
    std::filesystem::path path_;
    bool keep_ = false;
};

}  // namespace kxjob::command
