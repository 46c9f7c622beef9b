#include "demo/demo_files.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace kxjob::command {

namespace fs = std::filesystem;

std::vector<std::string> FilesBelow(const fs::path& folder) {
    std::vector<std::string> files;
    for (const fs::directory_entry& entry :
         fs::recursive_directory_iterator(folder, fs::directory_options::skip_permission_denied)) {
        std::error_code unreadable;
        if (entry.is_regular_file(unreadable) && !entry.is_symlink(unreadable))
            files.push_back(entry.path().string());
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<std::string> MakeUnreadableFiles(const fs::path& folder) {
    const fs::path link = folder / "link-to-nothing.txt";
    fs::create_symlink(folder / "nothing", link);
    const fs::path directory = folder / "folder-in-place-of-a-file.txt";
    fs::create_directory(directory);
    return {link.string(), directory.string()};
}

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (fs::temp_directory_path() / "kxjob-demo-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::system_error(errno, std::generic_category(), "Unable to make a folder in " + pattern);
    }
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    if (!keep_) fs::remove_all(path_, ignored);
}

}  // namespace kxjob::command
