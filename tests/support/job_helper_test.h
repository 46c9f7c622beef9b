#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "collaborators/this_thread.h"
#include "kxjob/array.h"
#include "kxjob/job_helper.h"
#include "support/fake_collaborators.h"
#include "support/mock_collaborators.h"
#include "support/raised_error.h"

namespace kxjob::testing_support {

/// Strict mocks in this thread's slots for all that a method must call in order; fakes for what it only
/// needs: the formatter (V(x), G(x)), array bounds, the keyed collection, the table names, the error-logging
/// component.
///
/// Expect in sequence, and give components where they are asked for:
///     InSequence inThisOrder;
///     ExpectTableNames();
///     EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
///     EXPECT_CALL(data, Execute("db", 2, 1, "UPDATE kx_jobtask SET ..."));
class JobHelperTest : public ::testing::Test {
protected:
    JobHelperTest();
    ~JobHelperTest() override;

    /// The call that every method which touches tables makes first.
    void ExpectTableNames();
    /// A component is asked for and found.
    void ExpectComponent(const std::string& progIdTemplate, const ComponentRef& component);
    /// One trace line of `method` of JobHelper.
    void ExpectTrace(const std::string& message, std::int32_t level, const std::string& method);
    /// Makes the next call of `method` through the configuration helper give these settings: the whole
    /// fallback.
    void ExpectConfiguration(const std::string& connectionString, const Value& provider,
                             const std::string& nameQualifier);
    /// A result of `columns` columns; each inner list is a row.
    static Value Rows(std::int32_t columns, const std::vector<std::vector<Value>>& rows);

    /// Expects `call` to raise the library's own error `number` of `method` of JobHelper with `description`,
    /// and the error-logging component to have been told by exactly the methods in `frames`, the innermost
    /// first.
    void ExpectOwnError(const std::function<void()>& call, std::int32_t number, const std::string& method,
                        const std::string& description, const std::vector<std::string>& frames);
    /// Expects `call` to raise exactly what a collaborator raised, and the same told by `frames`.
    void ExpectPassedOn(const std::function<void()>& call, const AutomationError& raised,
                        const std::vector<std::string>& frames);
    void ExpectTold(const AutomationError& error, const std::vector<std::string>& frames) const;

    // In the thread's slots:
    std::shared_ptr<::testing::StrictMock<MockInputGuard>> guardRef;
    std::shared_ptr<::testing::StrictMock<MockDataAccess>> dataRef;
    std::shared_ptr<::testing::StrictMock<MockTraceLog>> traceRef;
    std::shared_ptr<::testing::StrictMock<MockGuidService>> guidsRef;
    std::shared_ptr<::testing::StrictMock<MockTimeService>> timesRef;
    std::shared_ptr<::testing::StrictMock<MockScriptLibrary>> scriptsRef;
    std::shared_ptr<::testing::StrictMock<MockRandomSource>> randomRef;
    std::shared_ptr<::testing::StrictMock<MockPlatform>> platformRef;
    // Given out whenever a method makes one:
    std::shared_ptr<::testing::StrictMock<MockObjectFactory>> factoryRef;
    std::shared_ptr<::testing::StrictMock<MockConnectionSettings>> settingsRef;
    std::shared_ptr<::testing::StrictMock<MockSystemFlagReader>> flagsRef;
    std::shared_ptr<::testing::StrictMock<MockBatchSqlExecutor>> executorRef;
    std::shared_ptr<::testing::StrictMock<MockEnvironmentInfo>> environmentRef;
    std::shared_ptr<FakeDebugTools> debugTools;
    std::shared_ptr<FakeTableNameHelper> tableNames;

    // The same, as EXPECT_CALL wants them.
    MockInputGuard& guard;
    MockDataAccess& data;
    MockTraceLog& trace;
    MockGuidService& guids;
    MockTimeService& times;
    MockScriptLibrary& scripts;
    MockRandomSource& random;
    MockPlatform& platform;
    MockObjectFactory& factory;
    MockConnectionSettings& settings;
    MockSystemFlagReader& flags;
    MockBatchSqlExecutor& executor;
    MockEnvironmentInfo& environment;

    /// How often a method has made each kind of object that lives for one call.
    struct Made {
        int objectFactories = 0;
        int settings = 0;
        int flagReaders = 0;
        int executors = 0;
        int environments = 0;
        int keyedCollections = 0;
    } made;

    JobHelper helper;

private:
    class Factory;
};

}  // namespace kxjob::testing_support
