#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <list>
#include <thread>

#include "apps/worker_host/host_process.h"
#include "apps/worker_host/work_contract.h"
#include "contract/native/file_engines.h"
#include "kxjob/automation_error.h"

namespace kxjob::testing_support {
namespace {

/// Hosts in processes of their own that share one job, and a table that notes every item that comes to an
/// end.
class ManyHostsContract : public WorkContract {
protected:
    void SetUp() override {
        WorkContract::SetUp();
        if (IsSkipped()) return;
        std::ofstream(folder_.File("kxjob.conf"), std::ios::app) << WorkComponentLine();
        AddType("TYPE", "Work_83.Worker");
        store_->Execute("CREATE TABLE ended (item varchar(64))");
        for (const std::string& statement : Auditing()) store_->Execute(statement);
    }
    /// How many items the job has; more where somebody asks for it.
    static int Items() {
        const char* asked = std::getenv("KXJOB_WORK_ITEMS");
        return asked == nullptr ? 1000 : std::atoi(asked);
    }
    void Start(int hosts, const std::string& lease) {
        for (int i = 0; i < hosts; ++i) {
            hosts_.emplace_back(folder_, std::to_string(++started_), connection_,
                                std::vector<std::string>{"--until-empty", "--threads", "4", "--lease", lease,
                                                         "--poll", "0.1", "--lot-limit", "50"});
        }
    }
    void WaitUntilEnded(int items) {
        while (Cell("SELECT COUNT(*) FROM ended").ToInt32() < items) std::this_thread::yield();
    }
    void SendToAll(int signal) {
        for (const HostProcess& host : hosts_) host.Send(signal);
    }
    /// Kills a host that has items in its hands: all are stopped while it is looked for, else quick ones
    /// would be done by then.
    void KillOneAtWork() {
        while (Cell("SELECT COUNT(*) FROM ended").ToInt32() < Items()) {
            SendToAll(SIGSTOP);
            const auto victim =
                std::ranges::find_if(hosts_, [this](const HostProcess& host) { return HoldsItems(host); });
            const bool isThere = victim != hosts_.end();
            if (isThere) {
                victim->Send(SIGKILL);
                EXPECT_EQ(victim->ExitStatus(), 128 + SIGKILL);
                hosts_.erase(victim);
            }
            SendToAll(SIGCONT);
            if (isThere) return;
        }
        FAIL() << "all items ended before a host was killed";
    }
    bool HoldsItems(const HostProcess& host) {
        return Cell(
                   "SELECT COUNT(*) FROM kx_JobItem item, kx_jobtask task WHERE item.jobtaskguid ="
                   " task.jobtaskguid AND item.jobitemstateid = 'RUNNING' AND task.processid = " +
                   std::to_string(host.Process()))
                   .ToInt32() > 0;
    }
    void ExpectAllHostsToEndWell() {
        for (HostProcess& host : hosts_) EXPECT_EQ(host.ExitStatus(), 0) << host.Err();
        hosts_.clear();
    }
    /// A host that is killed may leave a task that holds nothing: nobody waits for that one.
    void ExpectNoTaskToBeLeft() {
        EXPECT_EQ(Cell("SELECT COUNT(*) FROM kx_jobtask WHERE jobtaskstateid = 'RUNNING'"), Value(0));
    }
    void ExpectEachItemToHaveEndedOnce(const std::string& job) {
        EXPECT_EQ(JobCell(job, "jobstateid"), Value("COMPLETE"));
        EXPECT_EQ(ItemsAt(job, "COMPLETE"), Value(Items()));
        EXPECT_EQ(Cell("SELECT COUNT(*) FROM ended"), Value(Items()));
        EXPECT_EQ(Cell("SELECT COUNT(DISTINCT item) FROM ended"), Value(Items()));
        EXPECT_EQ(JobCell(job, "succeededitemcount"), Value(Items()));
        EXPECT_EQ(JobCell(job, "faileditemcount"), Value(0));
        EXPECT_EQ(Cell("SELECT COUNT(*) FROM kx_adminhistory WHERE detail LIKE '%COMPLETE%'"), Value(1));
    }

    std::list<HostProcess> hosts_;
    int started_ = 0;

private:
    std::vector<std::string> Auditing() const {
        const std::string insert = "INSERT INTO ended (item) VALUES (NEW.jobitemguid);";
        const std::string ends = "NEW.jobitemstateid IN ('COMPLETE', 'FAILED')";
        if (GetParam().name == "PostgreSql") {
            return {"CREATE FUNCTION note_end() RETURNS trigger LANGUAGE plpgsql AS 'BEGIN " + insert +
                        " RETURN NULL; END'",
                    "CREATE TRIGGER item_ends AFTER UPDATE ON kx_JobItem FOR EACH ROW WHEN (" + ends +
                        ") EXECUTE FUNCTION note_end()"};
        }
        if (GetParam().name == "MariaDb") {
            return {
                "CREATE TRIGGER item_ends AFTER UPDATE ON kx_JobItem FOR EACH ROW INSERT INTO ended (item)"
                " SELECT NEW.jobitemguid FROM DUAL WHERE " +
                ends};
        }
        return {"CREATE TRIGGER item_ends AFTER UPDATE ON kx_JobItem FOR EACH ROW WHEN " + ends + " BEGIN " +
                insert + " END"};
    }
};

TEST_P(ManyHostsContract, EndEachItemOnce) {
    const std::string job = MakeJob("TYPE", "QUEUED", Items());

    Start(4, "60");
    ExpectAllHostsToEndWell();

    ExpectEachItemToHaveEndedOnce(job);
    ExpectNoTaskToBeLeft();
}

TEST_P(ManyHostsContract, EndEachItemOnceWhenSomeAreKilled) {
    const std::string job = MakeJob("TYPE", "QUEUED", Items());
    Start(4, "0.6");

    for (int killed = 1; killed <= 3; ++killed) {
        WaitUntilEnded(Items() * killed / 5);
        KillOneAtWork();
        Start(1, "0.6");
    }
    ExpectAllHostsToEndWell();

    ExpectEachItemToHaveEndedOnce(job);
    EXPECT_GE(Cell("SELECT COUNT(*) FROM kx_jobtask WHERE jobtaskstateid = 'FAILED'").ToInt32(), 1)
        << "no host was killed with a task";
}

INSTANTIATE_TEST_SUITE_P(Engines, ManyHostsContract,
                         testing::Values(SqliteFile(), PostgreSqlServer(), MariaDbServer()), EngineName);

/// Hosts whose server dies in the middle of their work.
class HostsAndCrashContract : public ManyHostsContract {
protected:
    void Crash() {
        const char* stores = std::getenv("KXJOB_STORES");
        ASSERT_NE(stores, nullptr) << "script/stores says where it is";
        ASSERT_EQ(std::system((std::string(stores) + " crash " + GetParam().serverName).c_str()), 0);
        EXPECT_THROW(Cell("SELECT COUNT(*) FROM ended"), AutomationError) << "the connection was lost";
    }
};

TEST_P(HostsAndCrashContract, EndEachItemOnce) {
    const std::string job = MakeJob("TYPE", "QUEUED", Items());
    Start(4, "5");

    WaitUntilEnded(Items() / 2);
    SendToAll(SIGSTOP);  // else quick hosts are done by then
    ASSERT_LT(Cell("SELECT COUNT(*) FROM ended").ToInt32(), Items());
    Crash();
    SendToAll(SIGCONT);
    for (HostProcess& host : hosts_) {
        EXPECT_EQ(host.ExitStatus(), 0) << host.Err();
    }
    EXPECT_THAT(hosts_.front().Err(), testing::HasSubstr("The store is away, waiting for it: "));
    EXPECT_THAT(hosts_.front().Err(), testing::HasSubstr("The store is back."));

    ExpectEachItemToHaveEndedOnce(job);
    hosts_.clear();
}

INSTANTIATE_TEST_SUITE_P(Engines, HostsAndCrashContract, testing::Values(PostgreSqlServer(), MariaDbServer()),
                         EngineName);

}  // namespace
}  // namespace kxjob::testing_support
