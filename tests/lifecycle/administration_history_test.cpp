#include <memory>

#include "support/job_helper_test.h"

namespace kxjob {
namespace {

using ::testing::_;
using ::testing::ElementsAre;
using ::testing::InSequence;
using ::testing::Return;
using ::testing::StrictMock;
using ::testing::Throw;
using testing_support::JobHelperTest;
using testing_support::MockComponent;

/// The private writer of history entries, through the method that uses it.
class PiAdminHistoryWrite : public JobHelperTest {
protected:
    void ExpectUpdate(const std::string& state) {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
        EXPECT_CALL(guard, CheckParameter(state, "JobStateID"));
        EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
        EXPECT_CALL(data, Execute("db", 5, 1, _));
    }

    std::shared_ptr<StrictMock<MockComponent>> admin = std::make_shared<StrictMock<MockComponent>>();
    const AutomationError failure{error_number::kStatementFailed, "AppModelAdmin", "no history table"};
};

TEST_F(PiAdminHistoryWrite, HandsOverConnectionQualifierActionAndDetailButNotTheProvider) {
    InSequence inThisOrder;
    ExpectUpdate("READY");
    ExpectComponent("AppModelAdmin_%v.Admin", admin);
    EXPECT_CALL(*admin, CallMember("AdminHistoryWrite",
                                   ElementsAre(Value("db"), Value("kx_"), Value("JOB_STATUS_UPDATE"),
                                               Value("<job><jobguid>{J}</jobguid>"
                                                     "<jobstateid>READY</jobstateid></job>"))));

    helper.UpdateJobStatus("db", 5, "kx_", "{J}", "READY");
}

TEST_F(PiAdminHistoryWrite, MakesAnObjectFactoryOfItsOwn) {
    InSequence inThisOrder;
    ExpectUpdate("READY");
    ExpectComponent("AppModelAdmin_%v.Admin", admin);
    EXPECT_CALL(*admin, CallMember("AdminHistoryWrite", _));

    helper.UpdateJobStatus("db", 5, "kx_", "{J}", "READY");

    EXPECT_EQ(made.objectFactories, 2);
}

TEST_F(PiAdminHistoryWrite, IgnoresWhatTheHistoryComponentReturns) {
    InSequence inThisOrder;
    ExpectUpdate("READY");
    ExpectComponent("AppModelAdmin_%v.Admin", admin);
    EXPECT_CALL(*admin, CallMember("AdminHistoryWrite", _)).WillOnce(Return(Null{}));

    helper.UpdateJobStatus("db", 5, "kx_", "{J}", "READY");

    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(PiAdminHistoryWrite, TellsOfAMissingHistoryComponentInItsOwnNameFirst) {
    const AutomationError missing(error_number::kClassNotRegistered, "ObjectFactory", "not registered");
    InSequence inThisOrder;
    ExpectUpdate("READY");
    EXPECT_CALL(factory, CreateVersioned("AppModelAdmin_%v.Admin")).WillOnce(Throw(missing));

    ExpectPassedOn([&] { helper.UpdateJobStatus("db", 5, "kx_", "{J}", "READY"); }, missing,
                   {"piAdminHistoryWrite", "UpdateJobStatus"});
}

TEST_F(PiAdminHistoryWrite, TellsOfAFailingEntryInItsOwnNameFirst) {
    InSequence inThisOrder;
    ExpectUpdate("READY");
    ExpectComponent("AppModelAdmin_%v.Admin", admin);
    EXPECT_CALL(*admin, CallMember("AdminHistoryWrite", _)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { helper.UpdateJobStatus("db", 5, "kx_", "{J}", "READY"); }, failure,
                   {"piAdminHistoryWrite", "UpdateJobStatus"});
}

/// The entries themselves, whichever method writes them.
class AdministrationHistory : public PiAdminHistoryWrite {};

TEST_F(AdministrationHistory, CopiesMarkupInAStateUnescaped) {
    InSequence inThisOrder;
    ExpectUpdate("<R&D>");
    ExpectComponent("AppModelAdmin_%v.Admin", admin);
    EXPECT_CALL(*admin, CallMember("AdminHistoryWrite",
                                   ElementsAre(Value("db"), Value("kx_"), Value("JOB_STATUS_UPDATE"),
                                               Value("<job><jobguid>{J}</jobguid>"
                                                     "<jobstateid><R&D></jobstateid></job>"))));

    helper.UpdateJobStatus("db", 5, "kx_", "{J}", "<R&D>");
}

TEST_F(AdministrationHistory, CopiesMarkupInTheGuidOfARemovedJobUnescapedAndGivesNoProvider) {
    EXPECT_CALL(guard, CheckParameter(_, _)).Times(2);
    EXPECT_CALL(trace, Write(_, _, _, _, _)).Times(3);
    EXPECT_CALL(data, Execute("db", 5, 1, _)).Times(3);
    ExpectTableNames();
    ExpectComponent("AppModelAdmin_%v.Admin", admin);
    EXPECT_CALL(*admin,
                CallMember("AdminHistoryWrite", ElementsAre(Value("db"), Value("kx_"), Value("JOB_REMOVED"),
                                                            Value("<job><jobguid>a<b&c</jobguid></job>"))));

    helper.RemoveJobAndItems("db", 5, "kx_", "a<b&c");
}

TEST_F(AdministrationHistory, CopiesMarkupOfANewJobUnescapedAndGivesNoProvider) {
    const auto schema = std::make_shared<StrictMock<MockComponent>>();
    EXPECT_CALL(factory, CreateVersioned("TableNameHelper_%v.TableNameHelper"))
        .Times(3)
        .WillRepeatedly(Return(tableNames));
    EXPECT_CALL(guard, CheckParameter(_, _)).Times(6);
    ExpectComponent("ApplicationSchema_%v.Schema", schema);
    EXPECT_CALL(*schema, CallMember("ListOfContainerSubSystems", _)).WillOnce(Return(Array::List({})));
    EXPECT_CALL(data, Query("db", 5, 1, _, true))
        .WillOnce(Return(Rows(4, {{"<T&>", "Odd", "Impl.Odd", "Notify.Odd"}})))
        .WillOnce(Return(Value()));
    EXPECT_CALL(trace, Write(_, _, _, _, _)).Times(2);
    EXPECT_CALL(data, Execute("db", 5, 1, _));
    ExpectComponent("AppModelAdmin_%v.Admin", admin);
    EXPECT_CALL(*admin, CallMember("AdminHistoryWrite",
                                   ElementsAre(Value("db"), Value("kx_"), Value("JOB_CREATE"),
                                               Value("<job><jobtypeid><T&></jobtypeid><jobguid>&g</jobguid>"
                                                     "<appstateguid>\"a'</appstateguid>"
                                                     "<totalitemcount>250</totalitemcount></job>"))));

    helper.CreateJob("db", 5, "kx_", "&g", "<T&>", "May", "\"a'", "", 250);
}

}  // namespace
}  // namespace kxjob
