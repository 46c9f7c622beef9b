#include "store/row_indexes.h"

#include <memory>
#include <vector>

#include "frame/factory_over_fixture.h"
#include "support/job_helper_test.h"

namespace kxjob {
namespace {

using ::testing::ElementsAre;
using ::testing::InSequence;
using ::testing::IsEmpty;
using ::testing::Return;
using ::testing::StrictMock;
using ::testing::Throw;
using testing_support::FactoryOverFixture;
using testing_support::JobHelperTest;

class MockArrayInspector : public ArrayInspector {
public:
    MOCK_METHOD(std::int32_t, LowerBound, (const Value&), (override));
    MOCK_METHOD(std::int32_t, UpperBound, (const Value&), (override));
    MOCK_METHOD(std::int32_t, ElementCount, (const Value&), (override));
    MOCK_METHOD(std::int32_t, DimensionCount, (const Value&), (override));
};

class InspectorFactory : public FactoryOverFixture {
public:
    InspectorFactory(std::shared_ptr<CollaboratorFactory> inner, std::shared_ptr<ArrayInspector> inspector)
        : FactoryOverFixture(std::move(inner)), inspector_(std::move(inspector)) {}
    std::shared_ptr<ArrayInspector> MakeArrayInspector() override { return inspector_; }

private:
    std::shared_ptr<ArrayInspector> inspector_;
};

std::vector<std::int32_t> IndexesOf(const Value& rows) {
    std::vector<std::int32_t> indexes;
    InFrame("Probe", {}, [&](Frame& frame) {
        for (const std::int32_t row : RowIndexes(frame, rows)) indexes.push_back(row);
    });
    return indexes;
}

class RowIndexesOfAResult : public JobHelperTest {};

TEST_F(RowIndexesOfAResult, CountItsRowsFromZero) {
    EXPECT_THAT(IndexesOf(Rows(1, {{"a"}})), ElementsAre(0));
    EXPECT_THAT(IndexesOf(Rows(2, {{"a", 1}, {"b", 2}, {"c", 3}})), ElementsAre(0, 1, 2));
}

TEST_F(RowIndexesOfAResult, AreNoneWithoutARow) {
    EXPECT_THAT(IndexesOf(Value()), IsEmpty());
}

class RowIndexesByBounds : public JobHelperTest {
protected:
    RowIndexesByBounds() {
        InstallCollaborators(std::make_shared<InspectorFactory>(ThisThread().SharedFactory(), inspectorRef));
    }

    void ExpectBounds(const Value& array, std::int32_t lower, std::int32_t upper) {
        EXPECT_CALL(inspector, LowerBound(array)).WillOnce(Return(lower));
        EXPECT_CALL(inspector, UpperBound(array)).WillOnce(Return(upper));
    }

    std::shared_ptr<StrictMock<MockArrayInspector>> inspectorRef =
        std::make_shared<StrictMock<MockArrayInspector>>();
    MockArrayInspector& inspector = *inspectorRef;
};

TEST_F(RowIndexesByBounds, AskForTheLowerAndThenTheUpperBoundOnce) {
    InSequence inThisOrder;
    ExpectBounds("rows", 3, 6);

    EXPECT_THAT(IndexesOf("rows"), ElementsAre(3, 4, 5, 6));
}

TEST_F(RowIndexesByBounds, MayBeNegative) {
    InSequence inThisOrder;
    ExpectBounds("rows", -2, 0);

    EXPECT_THAT(IndexesOf("rows"), ElementsAre(-2, -1, 0));
}

TEST_F(RowIndexesByBounds, AreNoneWhenTheUpperBoundIsBelowTheLower) {
    InSequence inThisOrder;
    ExpectBounds("rows", 1, 0);
    ExpectBounds("rows", 5, -1);

    EXPECT_THAT(IndexesOf("rows"), IsEmpty());
    EXPECT_THAT(IndexesOf("rows"), IsEmpty());
}

TEST_F(RowIndexesByBounds, PassOnWhatTheInspectorRaises) {
    const AutomationError failure(-88, "The inspector", "no array");
    EXPECT_CALL(inspector, LowerBound).WillOnce(Throw(failure));

    ExpectPassedOn([] { IndexesOf("rows"); }, failure, {"Probe"});
}

}  // namespace
}  // namespace kxjob
