#include "store/table_names.h"

#include "support/job_helper_test.h"

namespace kxjob {
namespace {

using ::testing::InSequence;
using ::testing::Return;
using ::testing::StrictMock;
using ::testing::Throw;
using testing_support::ErrorOf;
using testing_support::JobHelperTest;
using testing_support::MockComponent;

class TableNamesTest : public JobHelperTest {
protected:
    /// Runs `use` with the table names of `nameQualifier`, inside a method.
    static void WithTables(const std::string& nameQualifier,
                           const std::function<void(const TableNames&)>& use) {
        InFrame("Probe", {}, [&](Frame& frame) { use(TableNames(frame, nameQualifier)); });
    }

    std::shared_ptr<StrictMock<MockComponent>> names = std::make_shared<StrictMock<MockComponent>>();
};

TEST_F(TableNamesTest, AreTheQualifierFollowedDirectlyByTheNameOfTheComponent) {
    InSequence inThisOrder;
    ExpectComponent("TableNameHelper_%v.TableNameHelper", names);
    EXPECT_CALL(*names, GetMember("job")).WillOnce(Return(Value("J1")));
    EXPECT_CALL(*names, GetMember("JobItem")).WillOnce(Return(Value("J2")));
    EXPECT_CALL(*names, GetMember("jobtask")).WillOnce(Return(Value("J3")));
    EXPECT_CALL(*names, GetMember("JobType")).WillOnce(Return(Value("J4")));

    WithTables("dbo.kx_", [](const TableNames& tables) {
        EXPECT_EQ(tables.job(), "dbo.kx_J1");
        EXPECT_EQ(tables.JobItem(), "dbo.kx_J2");
        EXPECT_EQ(tables.jobtask(), "dbo.kx_J3");
        EXPECT_EQ(tables.JobType(), "dbo.kx_J4");
    });
    EXPECT_EQ(made.objectFactories, 1);
}

TEST_F(TableNamesTest, AreTheBaseNamesAloneWithoutAQualifier) {
    ExpectTableNames();

    WithTables("", [](const TableNames& tables) {
        EXPECT_EQ(tables.job(), "job");
        EXPECT_EQ(tables.JobItem(), "JobItem");
        EXPECT_EQ(tables.jobtask(), "jobtask");
        EXPECT_EQ(tables.JobType(), "JobType");
    });
}

TEST_F(TableNamesTest, GiveTheBaseNameAloneWhenAskedForIt) {
    InSequence inThisOrder;
    ExpectComponent("TableNameHelper_%v.TableNameHelper", names);
    EXPECT_CALL(*names, GetMember("JobItem")).WillOnce(Return(Value("items")));

    WithTables("kx_", [](const TableNames& tables) { EXPECT_EQ(tables.Base("JobItem"), "items"); });
}

TEST_F(TableNamesTest, AreMadeOneByOneWhenTheyAreAskedFor) {
    ExpectComponent("TableNameHelper_%v.TableNameHelper", names);

    WithTables("kx_", [](const TableNames&) {});
}

TEST_F(TableNamesTest, PassOnWhatTheComponentRaises) {
    const AutomationError failure(-88, "The table names", "no such table");
    InSequence inThisOrder;
    ExpectComponent("TableNameHelper_%v.TableNameHelper", names);
    EXPECT_CALL(*names, GetMember("job")).WillOnce(Throw(failure));

    ExpectPassedOn([&] { WithTables("kx_", [](const TableNames& tables) { tables.job(); }); }, failure,
                   {"Probe"});
}

TEST_F(TableNamesTest, ReportTheLineThatAskedForAName) {
    InSequence inThisOrder;
    ExpectComponent("TableNameHelper_%v.TableNameHelper", names);
    EXPECT_CALL(*names, GetMember("job")).WillOnce(Throw(AutomationError(-88, "s", "d")));
    int line = 0;

    ErrorOf([&] {
        WithTables("kx_", [&](const TableNames& tables) {
            line = __LINE__ + 1;
            tables.job();
        });
    });

    ASSERT_EQ(debugTools->told.size(), 1U);
    EXPECT_EQ(debugTools->told[0].line, line);
}

}  // namespace
}  // namespace kxjob
