#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>
#include <string>

#include "collaborators/this_thread.h"
#include "contract/process_group.h"
#include "files/temporary_folder.h"
#include "kxjob/array.h"
#include "kxjob/automation_error.h"
#include "kxjob/job_helper.h"
#include "kxjob/store.h"
#include "seeded/seeded_store.h"
#include "support/every_method.h"

namespace kxjob::testing_support {
namespace {

/// For whom file permissions count: the superuser is above them.
void BecomeSomebody() {
    constexpr uid_t kNobody = 65534;
    if (geteuid() == 0 && setuid(kNobody) != 0) throw std::runtime_error("setuid");
}

/// The error's number above the base; 0 for none.
std::int32_t NumberOfUpdate(const std::string& connection) {
    try {
        JobHelper().UpdateJobStatus(connection, dspSqlite, "app_", kJobGuid, "COMPLETE");
    } catch (const AutomationError& error) {
        return error.Number() - static_cast<std::int32_t>(kObjectErrorBase);
    }
    return 0;
}

TEST(SqliteRights, AreThoseOfTheFile) {
    struct Numbers {
        std::int32_t readOnly = -1;
        std::int32_t writable = -1;
    };
    const TemporaryFolder folder;
    folder.OpenToAll();
    const std::string file = folder.File("rights.db");
    const std::string connection = "Driver=SQLite;Database=" + file;
    SeedStore(connection, "app_");
    InstallCollaborators(nullptr);
    auto& numbers = ProcessGroup::Shared<Numbers>();
    const auto asSomebody = [&](mode_t fileMode, mode_t folderMode, std::int32_t& number) {
        chmod(file.c_str(), fileMode);
        chmod(folder.Path("").c_str(), folderMode);
        return ProcessGroup::Run(
            [&](ProcessGroup&, int) {
                BecomeSomebody();
                number = NumberOfUpdate(connection);
            },
            1);
    };

    EXPECT_EQ(asSomebody(0444, 0755, numbers.readOnly), 0);
    EXPECT_EQ(asSomebody(0666, 0777, numbers.writable), 0);
    chmod(folder.Path("").c_str(), 0777);

    EXPECT_TRUE(numbers.readOnly == 703 || numbers.readOnly == 704) << numbers.readOnly;
    EXPECT_EQ(numbers.writable, 0);
}

}  // namespace
}  // namespace kxjob::testing_support
