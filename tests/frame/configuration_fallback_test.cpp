#include "support/job_helper_test.h"

namespace kxjob {
namespace {

using ::testing::ElementsAre;
using ::testing::InSequence;
using ::testing::Return;
using ::testing::StrictMock;
using ::testing::Throw;
using testing_support::ErrorOf;
using testing_support::JobHelperTest;
using testing_support::MockComponent;

const AutomationError kConfigurationFailure(-88, "The configuration", "it failed");

constexpr const char* kAllTasks =
    "SELECT jobtaskguid, description, jobguid, machine, processid, threadid, lastjobitem, command,"
    " usercontext, jobtaskstateid, startdt, enddt, lockguid FROM cfg_jobtask";

/// Shown on GetJobTasks, the shortest of the methods that have the fallback.
class ConfigurationFallback : public JobHelperTest {
protected:
    using HelperMock = StrictMock<MockComponent>;

    void ExpectHelper(const ComponentRef& component) {
        EXPECT_CALL(platform, CreateObject("cfgApiCom_83.ComVTLConfigHelper")).WillOnce(Return(component));
    }
    void ExpectDocument(HelperMock& configurationHelper) {
        EXPECT_CALL(configurationHelper, CallMember("Init", ElementsAre(Value(""))))
            .WillOnce(Return(Value()));
        EXPECT_CALL(configurationHelper, GetMember("RMConnectionDocument"))
            .WillOnce(Return(Value("the document")));
    }
    void ExpectSettings(const Value& provider) {
        EXPECT_CALL(settings, ADOConnectionString()).WillOnce(Return("cfgdb"));
        EXPECT_CALL(settings, Provider()).WillOnce(Return(provider));
        EXPECT_CALL(settings, NameSpaceQualifier()).WillOnce(Return("cfg_"));
    }
    /// The method's own work, with what the configuration says.
    void ExpectWorkWith(DataStoreProvider provider) {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter("cfg_", "NameQualifier"));
        EXPECT_CALL(data, Query("cfgdb", provider, 1, kAllTasks, true)).WillOnce(Return(Value()));
    }
    void ExpectFailure(const std::vector<std::string>& frames) {
        ExpectPassedOn([&] { helper.GetJobTasks("", 2, ""); }, kConfigurationFailure, frames);
    }

    std::shared_ptr<HelperMock> configuration = std::make_shared<HelperMock>();
};

TEST_F(ConfigurationFallback, LoadsTheDocumentAndReadsItsThreeItemsInOrder) {
    InSequence inThisOrder;
    ExpectHelper(configuration);
    EXPECT_CALL(*configuration, CallMember("Init", ElementsAre(Value("")))).WillOnce([&] {
        EXPECT_EQ(made.settings, 0);
        return Value();
    });
    EXPECT_CALL(*configuration, GetMember("RMConnectionDocument")).WillOnce([&] {
        EXPECT_EQ(made.settings, 1);
        return Value("the document");
    });
    EXPECT_CALL(settings, LoadFromText("the document"));
    EXPECT_CALL(settings, ADOConnectionString()).WillOnce(Return("cfgdb"));
    EXPECT_CALL(settings, Provider()).WillOnce(Return(Value(5)));
    EXPECT_CALL(settings, NameSpaceQualifier()).WillOnce(Return("cfg_"));
    ExpectWorkWith(5);

    helper.GetJobTasks("", 2, "");

    EXPECT_EQ(made.settings, 1);
    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(ConfigurationFallback, OverwritesAGivenQualifierWhenTheConnectionIsEmpty) {
    InSequence inThisOrder;
    ExpectConfiguration("cfgdb", 5, "cfg_");
    ExpectWorkWith(5);

    helper.GetJobTasks("", 2, "given_");
}

TEST_F(ConfigurationFallback, OverwritesAGivenConnectionWhenTheQualifierIsEmpty) {
    InSequence inThisOrder;
    ExpectConfiguration("cfgdb", 5, "cfg_");
    ExpectWorkWith(5);

    helper.GetJobTasks("given", 2, "");
}

TEST_F(ConfigurationFallback, AsksForNothingWhenBothAreGiven) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("cfg_", "NameQualifier"));
    EXPECT_CALL(data, Query("given", 3, 1, kAllTasks, true)).WillOnce(Return(Value()));

    helper.GetJobTasks("given", 3, "cfg_");

    EXPECT_EQ(made.settings, 0);
}

TEST_F(ConfigurationFallback, LeavesTheCallersTextsAlone) {
    InSequence inThisOrder;
    ExpectConfiguration("cfgdb", 5, "cfg_");
    ExpectWorkWith(5);
    std::string connection = "given";
    DataStoreProvider provider = 2;
    std::string qualifier;

    helper.GetJobTasks(connection, provider, qualifier);

    EXPECT_EQ(connection, "given");
    EXPECT_EQ(provider, 2);
    EXPECT_EQ(qualifier, "");
}

TEST_F(ConfigurationFallback, LoadsTheDocumentOnceInTheLifeOfAnInstance) {
    InSequence inThisOrder;
    ExpectHelper(configuration);
    ExpectDocument(*configuration);
    EXPECT_CALL(settings, LoadFromText("the document"));
    ExpectSettings(5);
    ExpectWorkWith(5);
    ExpectSettings(3);
    ExpectWorkWith(3);

    helper.GetJobTasks("", 2, "");
    helper.GetJobTasks("", 2, "");

    EXPECT_EQ(made.settings, 1);
}

TEST_F(ConfigurationFallback, SharesTheDocumentBetweenMethods) {
    InSequence inThisOrder;
    ExpectHelper(configuration);
    ExpectDocument(*configuration);
    EXPECT_CALL(settings, LoadFromText("the document"));
    ExpectSettings(5);
    ExpectWorkWith(5);
    ExpectSettings(5);
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("cfg_", "NameQualifier"));
    EXPECT_CALL(data, Query("cfgdb", 5, 1, ::testing::_, true)).WillOnce(Return(Value()));

    helper.GetJobTasks("", 2, "");
    helper.GetJob("", 2, "");

    EXPECT_EQ(made.settings, 1);
}

TEST_F(ConfigurationFallback, LoadsTheDocumentAnewForANewInstance) {
    InSequence inThisOrder;
    for (int instance = 0; instance < 2; ++instance) {
        ExpectHelper(configuration);
        ExpectDocument(*configuration);
        EXPECT_CALL(settings, LoadFromText("the document"));
        ExpectSettings(5);
        ExpectWorkWith(5);
    }

    helper.GetJobTasks("", 2, "");
    JobHelper another;
    another.GetJobTasks("", 2, "");

    EXPECT_EQ(made.settings, 2);
}

TEST_F(ConfigurationFallback, KeepsTheDocumentUntilTheInstanceEnds) {
    ExpectConfiguration("cfgdb", 5, "cfg_");
    ExpectWorkWith(5);
    const auto held = settingsRef.use_count();

    {
        JobHelper shortLived;
        shortLived.GetJobTasks("", 2, "");
        EXPECT_EQ(settingsRef.use_count(), held + 1);
    }

    EXPECT_EQ(settingsRef.use_count(), held);
}

TEST_F(ConfigurationFallback, ReleasesTheConfigurationHelperAfterLoading) {
    std::weak_ptr<HelperMock> helperOfTheCall;
    EXPECT_CALL(platform, CreateObject("cfgApiCom_83.ComVTLConfigHelper"))
        .WillOnce([&](const std::string&) -> ComponentRef {
            auto component = std::make_shared<HelperMock>();
            ExpectDocument(*component);
            helperOfTheCall = component;
            return component;
        });
    EXPECT_CALL(settings, LoadFromText("the document"));
    EXPECT_CALL(settings, ADOConnectionString()).WillOnce([&] {
        EXPECT_TRUE(helperOfTheCall.expired());
        return std::string("cfgdb");
    });
    EXPECT_CALL(settings, Provider()).WillOnce(Return(Value(5)));
    EXPECT_CALL(settings, NameSpaceQualifier()).WillOnce(Return("cfg_"));
    ExpectWorkWith(5);

    helper.GetJobTasks("", 2, "");
}

TEST_F(ConfigurationFallback, ReleasesTheConfigurationHelperAfterAFailure) {
    std::weak_ptr<HelperMock> helperOfTheCall;
    EXPECT_CALL(platform, CreateObject("cfgApiCom_83.ComVTLConfigHelper"))
        .WillOnce([&](const std::string&) -> ComponentRef {
            auto component = std::make_shared<HelperMock>();
            EXPECT_CALL(*component, CallMember("Init", ElementsAre(Value(""))))
                .WillOnce(Throw(kConfigurationFailure));
            helperOfTheCall = component;
            return component;
        });

    ExpectFailure({"RMConnectionDocument", "GetJobTasks"});

    EXPECT_TRUE(helperOfTheCall.expired());
}

TEST_F(ConfigurationFallback, TakesAProviderGivenAsText) {
    InSequence inThisOrder;
    ExpectConfiguration("cfgdb", "5", "cfg_");
    ExpectWorkWith(5);

    helper.GetJobTasks("", 2, "");
}

TEST_F(ConfigurationFallback, TakesZeroWhenNoProviderIsNamed) {
    InSequence inThisOrder;
    ExpectConfiguration("cfgdb", Value(), "cfg_");
    ExpectWorkWith(0);

    helper.GetJobTasks("", 2, "");
}

TEST_F(ConfigurationFallback, CannotTakeAProviderThatIsNoNumber) {
    InSequence inThisOrder;
    ExpectHelper(configuration);
    ExpectDocument(*configuration);
    EXPECT_CALL(settings, LoadFromText("the document"));
    EXPECT_CALL(settings, ADOConnectionString()).WillOnce(Return("cfgdb"));
    EXPECT_CALL(settings, Provider()).WillOnce(Return(Value("abc")));

    const AutomationError error = ErrorOf([&] { helper.GetJobTasks("", 2, ""); });

    EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x800A000DU));
    EXPECT_EQ(error.Description(), "Type mismatch");
    ExpectTold(error, {"GetJobTasks"});
}

TEST_F(ConfigurationFallback, CannotTakeAProviderThatDoesNotFit) {
    InSequence inThisOrder;
    ExpectHelper(configuration);
    ExpectDocument(*configuration);
    EXPECT_CALL(settings, LoadFromText("the document"));
    EXPECT_CALL(settings, ADOConnectionString()).WillOnce(Return("cfgdb"));
    EXPECT_CALL(settings, Provider()).WillOnce(Return(Value("4294967296")));

    EXPECT_EQ(ErrorOf([&] { helper.GetJobTasks("", 2, ""); }).Number(),
              static_cast<std::int32_t>(0x800A0006U));
}

TEST_F(ConfigurationFallback, GoesOnWithTheEmptyTextsOfTheDocument) {
    InSequence inThisOrder;
    ExpectConfiguration("", 5, "");
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    EXPECT_CALL(data, Query("", 5, 1,
                            "SELECT jobtaskguid, description, jobguid, machine, processid, threadid,"
                            " lastjobitem, command, usercontext, jobtaskstateid, startdt, enddt, lockguid"
                            " FROM jobtask",
                            true))
        .WillOnce(Return(Value()));

    helper.GetJobTasks("", 2, "kx_");
}

TEST_F(ConfigurationFallback, PassesOnThatThereIsNoConfigurationHelper) {
    EXPECT_CALL(platform, CreateObject("cfgApiCom_83.ComVTLConfigHelper"))
        .WillOnce(Throw(kConfigurationFailure));

    ExpectFailure({"RMConnectionDocument", "GetJobTasks"});
    EXPECT_EQ(made.settings, 0);
}

TEST_F(ConfigurationFallback, TriesAgainAfterAnInitThatFailed) {
    InSequence inThisOrder;
    ExpectHelper(configuration);
    EXPECT_CALL(*configuration, CallMember("Init", ElementsAre(Value(""))))
        .WillOnce(Throw(kConfigurationFailure));
    ExpectHelper(configuration);
    ExpectDocument(*configuration);
    EXPECT_CALL(settings, LoadFromText("the document"));
    ExpectSettings(5);
    ExpectWorkWith(5);

    ExpectFailure({"RMConnectionDocument", "GetJobTasks"});
    EXPECT_EQ(made.settings, 0);
    helper.GetJobTasks("", 2, "");

    EXPECT_EQ(made.settings, 1);
}

TEST_F(ConfigurationFallback, PassesOnThatTheDocumentCannotBeRead) {
    InSequence inThisOrder;
    ExpectHelper(configuration);
    EXPECT_CALL(*configuration, CallMember("Init", ElementsAre(Value("")))).WillOnce(Return(Value()));
    EXPECT_CALL(*configuration, GetMember("RMConnectionDocument")).WillOnce(Throw(kConfigurationFailure));

    ExpectFailure({"RMConnectionDocument", "GetJobTasks"});
}

// The settings are in the cache before they are loaded.
TEST_F(ConfigurationFallback, KeepsTheSettingsEvenWhenTheyCannotBeLoaded) {
    InSequence inThisOrder;
    ExpectHelper(configuration);
    ExpectDocument(*configuration);
    EXPECT_CALL(settings, LoadFromText("the document")).WillOnce(Throw(kConfigurationFailure));
    ExpectSettings(5);
    ExpectWorkWith(5);

    ExpectFailure({"RMConnectionDocument", "GetJobTasks"});
    helper.GetJobTasks("", 2, "");

    EXPECT_EQ(made.settings, 1);
}

TEST_F(ConfigurationFallback, PassesOnThatTheDocumentNamesNoConnection) {
    InSequence inThisOrder;
    ExpectHelper(configuration);
    ExpectDocument(*configuration);
    EXPECT_CALL(settings, LoadFromText("the document"));
    EXPECT_CALL(settings, ADOConnectionString()).WillOnce(Throw(kConfigurationFailure));

    ExpectFailure({"GetJobTasks"});
}

TEST_F(ConfigurationFallback, PassesOnThatTheQualifierCannotBeRead) {
    InSequence inThisOrder;
    ExpectHelper(configuration);
    ExpectDocument(*configuration);
    EXPECT_CALL(settings, LoadFromText("the document"));
    EXPECT_CALL(settings, ADOConnectionString()).WillOnce(Return("cfgdb"));
    EXPECT_CALL(settings, Provider()).WillOnce(Return(Value(5)));
    EXPECT_CALL(settings, NameSpaceQualifier()).WillOnce(Throw(kConfigurationFailure));

    ExpectFailure({"GetJobTasks"});
}

}  // namespace
}  // namespace kxjob
