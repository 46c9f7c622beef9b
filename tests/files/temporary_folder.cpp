#include "files/temporary_folder.h"

#include <random>
#include <system_error>

namespace kxjob::testing_support {

TemporaryFolder::TemporaryFolder() {
    std::random_device random;
    do {
        path_ = std::filesystem::temp_directory_path() / ("kxjob-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(path_));
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

void TemporaryFolder::OpenToAll() const {
    std::filesystem::permissions(path_, std::filesystem::perms::all);
}

}  // namespace kxjob::testing_support
