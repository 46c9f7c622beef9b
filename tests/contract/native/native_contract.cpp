#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstring>
#include <string>
#include <vector>

#include "collaborators/this_thread.h"
#include "contract/process_group.h"
#include "contract/store_contract.h"
#include "defaults/store/store_test_support.h"
#include "kxjob/automation_error.h"
#include "kxjob/caller_texts.h"
#include "support/sample_errors.h"

namespace kxjob::testing_support {
namespace {

/// What can be asked of the library natively only: it takes processes that divide, or texts that are no
/// UTF-8, for which automation has no counterpart.
class NativeContract : public StoreContract {};

TEST_P(NativeContract, RefusesTextsThatAreNoUtf8) {
    const std::string job = MakeJob(0);
    for (const std::string& text :
         {std::string("\xFF"), std::string("\xC0\xAF"), std::string("cut \xE2\x82")}) {
        EXPECT_EQ(ErrorOf([&] {
                      jobs_.AppendJobFailureNote(connectionString_, provider_, "kx_", job, text);
                  }).Number(),
                  error_number::kUnstorableText);
    }
    EXPECT_EQ(Cell("SELECT failurenote FROM kx_job"), Value(Null{}));
}

TEST_P(NativeContract, CreatesTablesFromManyProcessesAtOnce) {
    constexpr int kRounds = 5;
    InstallCollaborators(nullptr);

    const int failed = ProcessGroup::Run([this](ProcessGroup& group, int /*place*/) {
        for (int round = 0; round < kRounds; ++round) {
            group.Meet();
            Store(connectionString_, provider_, "r" + std::to_string(round) + "_").CreateTables();
        }
    });

    EXPECT_EQ(failed, 0);
    for (int round = 0; round < kRounds; ++round) {
        EXPECT_EQ(Cell("SELECT COUNT(*) FROM r" + std::to_string(round) + "_subsystem"), Value(0));
    }
}

/// What the processes that race for a lock share.
struct Race {
    static constexpr int kMostRounds = 2000;

    struct Round {
        std::array<char, 40> lock;  // the one that is raced for
        std::atomic<int> winners;
        std::atomic<int> losers;
    };
    std::array<Round, kMostRounds + 1> rounds;
    std::array<std::array<char, 40>, ProcessGroup::kSize> lastWon;
};

void Copy(const std::string& text, std::array<char, 40>& into) {
    std::memcpy(into.data(), text.c_str(), text.size() + 1);
}

TEST_P(NativeContract, GivesALockToExactlyOneOfManyProcesses) {
    const int rounds = GetParam().serverName.empty() ? 200 : Race::kMostRounds;
    const std::string job = MakeJob(0);
    const std::string firstLock = NewGuid();
    tables_->Execute("UPDATE kx_job SET jobeditorlockguid = '" + firstLock + "'");
    std::vector<std::string> tasks;
    for (int i = 0; i < ProcessGroup::kSize; ++i) {
        tasks.push_back(jobs_.RegisterJobTask(connectionString_, "kx_", "racer", job, "", "", i, i));
    }
    auto& race = ProcessGroup::Shared<Race>();
    Copy(firstLock, race.rounds[0].lock);
    InstallCollaborators(nullptr);

    const int failed = ProcessGroup::Run([&](ProcessGroup& group, int place) {
        const auto self = static_cast<std::size_t>(place);
        JobHelper jobs;
        for (int i = 0; i < rounds; ++i) {
            Race::Round& round = race.rounds[static_cast<std::size_t>(i)];
            group.Meet();
            try {
                const std::string won = jobs.GetNewLockExcludingInterlopers(
                    connectionString_, "kx_", job, tasks[self], round.lock.data(), 60);
                ++round.winners;
                Copy(won, race.rounds[static_cast<std::size_t>(i) + 1].lock);
                Copy(won, race.lastWon[self]);
            } catch (const AutomationError& error) {
                if (error.Number() != kLockTaken) throw;
                ++round.losers;
            }
            group.Meet();
        }
    });

    ASSERT_EQ(failed, 0);
    for (int i = 0; i < rounds; ++i) {
        EXPECT_EQ(race.rounds[static_cast<std::size_t>(i)].winners, 1) << i;
        EXPECT_EQ(race.rounds[static_cast<std::size_t>(i)].losers, ProcessGroup::kSize - 1) << i;
    }
    EXPECT_EQ(Cell("SELECT jobeditorlockguid FROM kx_job"),
              Value(race.rounds[static_cast<std::size_t>(rounds)].lock.data()));
    for (std::size_t i = 0; i < tasks.size(); ++i) {
        const Value held = Cell("SELECT lockguid FROM kx_jobtask WHERE jobtaskguid = '" + tasks[i] + "'");
        const bool hasWon = race.lastWon[i][0] != '\0';
        EXPECT_EQ(held, hasWon ? Value(race.lastWon[i].data()) : Value(Null{})) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Engines, NativeContract, testing::ValuesIn(EveryEngine()), EngineName);

}  // namespace
}  // namespace kxjob::testing_support
