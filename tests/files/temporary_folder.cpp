#include "files/temporary_folder.h"

#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace kxjob::testing_support {

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "kxjob-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::system_error(errno, std::generic_category());
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

void TemporaryFolder::OpenToAll() const {
    std::filesystem::permissions(path_, std::filesystem::perms::all);
}

}  // namespace kxjob::testing_support
