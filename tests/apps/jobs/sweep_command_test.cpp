#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <set>

#include "apps/command_store.h"
#include "contract/native/file_engines.h"
#include "kxjob/array.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

using ::testing::HasSubstr;
using Json = nlohmann::json;
using testing_support::CommandStore;
using testing_support::ContractEngine;
using testing_support::Finished;
using testing_support::StateGuid;

using Keys = std::set<std::string>;

Keys KeysOf(Store& store, const std::string& sql) {
    const Value rows = store.Query(sql);
    Keys keys;
    for (std::int32_t row = 0; !rows.IsEmpty() && row < rows.Rows().Rows(); ++row) {
        keys.insert(rows.Rows().Cell(0, row).ToText());
    }
    return keys;
}

/// The rows of the three tables, by their keys.
struct Content {
    Keys jobs;
    Keys items;
    Keys tasks;

    explicit Content(Store& store)
        : jobs(KeysOf(store, "SELECT jobguid FROM c_job")),
          items(KeysOf(store, "SELECT jobitemguid FROM c_JobItem")),
          tasks(KeysOf(store, "SELECT jobtaskguid FROM c_jobtask")) {}
};

Keys Without(const Keys& all, const Keys& some) {
    Keys rest;
    std::ranges::set_difference(all, some, std::inserter(rest, rest.end()));
    return rest;
}

Keys Named(const Json& list, const char* key) {
    Keys keys;
    for (const Json& one : list) keys.insert(one.at(key).get<std::string>());
    return keys;
}

class SweepCommand : public testing::TestWithParam<ContractEngine> {
protected:
    void SetUp() override {
        if (!GetParam().whyMissing.empty()) GTEST_SKIP() << GetParam().whyMissing;
        store_ = std::make_unique<CommandStore>(GetParam());
    }
    Store& Tables() { return store_->Tables(); }
    void Name(const std::string& state, const std::string& guid) {
        Tables().Execute("INSERT INTO c_applicationstate (stateid, stateguid) VALUES ('" + state + "', '" +
                         guid + "')");
    }
    void AddJob(const std::string& guid, const std::string& applicationState) {
        Tables().Execute("INSERT INTO c_job (jobguid, jobtypeid, jobstateid, appstateguid) VALUES ('" + guid +
                         "', 'TYPE', 'COMPLETE', " + applicationState + ")");
    }
    void AddItem(const std::string& guid, const std::string& job) {
        Tables().Execute("INSERT INTO c_JobItem (jobitemguid, jobguid, identifier, sequence) VALUES ('" +
                         guid + "', '" + job + "', 'x', 0)");
    }
    void AddTask(const std::string& guid, const std::string& jobLiteral) {
        Tables().Execute("INSERT INTO c_jobtask (jobtaskguid, jobguid) VALUES ('" + guid + "', " +
                         jobLiteral + ")");
    }
    /// A store with jobs of several states and of none, and rows of jobs that are not there.
    void FillAtRandom(std::mt19937& chance);
    /// Compares the dry run with what the sweep then removes.
    void ExpectSweepKeepsItsWord();

    std::unique_ptr<CommandStore> store_;
};

void SweepCommand::FillAtRandom(std::mt19937& chance) {
    const auto upTo = [&](unsigned end) { return static_cast<unsigned>(chance() % end); };
    for (const char* table : {"c_job", "c_JobItem", "c_jobtask", "c_applicationstate"}) {
        Tables().Execute(std::string("DELETE FROM ") + table);
    }
    if (upTo(3) > 0) Name("PRODUCTION", StateGuid('1'));
    if (upTo(3) > 0) Name("DEVELOPMENT", StateGuid('2'));
    const std::vector<std::string> states{"NULL", "'" + StateGuid('1') + "'", "'" + StateGuid('2') + "'",
                                          "'" + StateGuid('3') + "'",
                                          "'{00000000-0000-0000-0000-000000000000}'"};
    const unsigned jobs = upTo(4);
    for (unsigned i = 0; i < jobs; ++i) AddJob("j" + std::to_string(i), states[upTo(5)]);
    for (unsigned i = 0; i < 6; ++i) {
        const std::string job = "j" + std::to_string(upTo(5));
        AddItem("i" + std::to_string(i), job);
        AddTask("t" + std::to_string(i), upTo(3) == 0 ? "NULL" : "'" + job + "'");
    }
}

void SweepCommand::ExpectSweepKeepsItsWord() {
    const Content before(Tables());
    const Json plan = store_->Answer({"sweep", "--dry-run"});
    const Content afterDryRun(Tables());
    ASSERT_EQ(afterDryRun.jobs, before.jobs);
    ASSERT_EQ(afterDryRun.items, before.items);
    ASSERT_EQ(afterDryRun.tasks, before.tasks);
    const Keys going = Named(plan.at("jobs"), "job");
    Keys items = Named(plan.at("orphanedItems"), "item");
    Keys tasks = Named(plan.at("orphanedTasks"), "task");
    for (const std::string& job : going) {
        items.merge(KeysOf(Tables(), "SELECT jobitemguid FROM c_JobItem WHERE jobguid = '" + job + "'"));
        tasks.merge(KeysOf(Tables(), "SELECT jobtaskguid FROM c_jobtask WHERE jobguid = '" + job + "'"));
    }

    const Json sweep = store_->Answer({"sweep", "--yes"});
    const Content after(Tables());

    EXPECT_EQ(Without(before.jobs, after.jobs), going) << plan;
    EXPECT_EQ(Without(before.items, after.items), items) << plan;
    EXPECT_EQ(Without(before.tasks, after.tasks), tasks) << plan;
    EXPECT_EQ(sweep.at("jobs"), plan.at("jobs"));
}

TEST_P(SweepCommand, RemovesExactlyWhatItsDryRunNames) {
    constexpr int kStores = 12;
    constexpr unsigned kSeed = 20260301;
    std::mt19937 chance(kSeed);  // the same stores each time
    for (int i = 0; i < kStores; ++i) {
        SCOPED_TRACE("store " + std::to_string(i));
        FillAtRandom(chance);
        ExpectSweepKeepsItsWord();
    }
}

TEST_P(SweepCommand, SaysWhatWouldGoAndWhy) {
    Name("PRODUCTION", StateGuid('1'));
    AddJob("stays", "'" + StateGuid('1') + "'");
    AddJob("goes", "'" + StateGuid('3') + "'");
    AddItem("i1", "goes");
    AddItem("i2", "gone");
    AddItem("i3", "gone");
    AddTask("t1", "'gone'");

    const Finished finished = store_->Run({"sweep", "--dry-run"});

    EXPECT_EQ(finished.exitStatus, 0) << finished.err;
    EXPECT_EQ(finished.out, "PRODUCTION is " + StateGuid('1') +
                                ", DEVELOPMENT is not there.\n\n"
                                "1 irrelevant job\n"
                                "  job   type  state     items  application state, which is neither\n"
                                "  goes  TYPE  COMPLETE  1      " +
                                StateGuid('3') +
                                "\n\n"
                                "2 orphaned items\n"
                                "  of job  items  why\n"
                                "  gone    2      there is no such job\n\n"
                                "1 orphaned task\n"
                                "  of job  tasks  why\n"
                                "  gone    1      there is no such job\n\n");
    const Json job = store_->Answer({"sweep", "--dry-run"}).at("jobs").at(0);
    EXPECT_EQ(job.at("reason"), "its application state " + StateGuid('3') + " is neither PRODUCTION " +
                                    StateGuid('1') + " nor DEVELOPMENT, which the container does not have");
}

TEST_P(SweepCommand, AsksBeforeItRemoves) {
    AddJob("goes", "'" + StateGuid('3') + "'");

    const Finished asked = store_->Run({"sweep"});
    EXPECT_EQ(asked.exitStatus, 2);
    EXPECT_THAT(asked.err, HasSubstr("Remove 1 job, 0 orphaned items and 0 orphaned tasks?"));
    EXPECT_EQ(store_->Cell("SELECT COUNT(*) FROM c_job"), Value(1));

    EXPECT_THAT(store_->Run({"sweep", "--yes"}).out,
                HasSubstr("Removed 1 job, 0 orphaned items and 0 orphaned tasks.\n"));
    EXPECT_EQ(store_->Cell("SELECT COUNT(*) FROM c_job"), Value(0));
    EXPECT_THAT(store_->Run({"sweep"}).out, HasSubstr("There is nothing to remove.\n"));
}

INSTANTIATE_TEST_SUITE_P(Engines, SweepCommand,
                         testing::Values(testing_support::SqliteFile(), testing_support::PostgreSqlServer(),
                                         testing_support::MariaDbServer()),
                         testing_support::EngineName);

}  // namespace
}  // namespace kxjob
