#include "collaborators/argument.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "collaborators/connection_settings.h"
#include "collaborators/keyed_collection.h"
#include "kxjob/collection.h"
#include "support/fake_collaborators.h"

namespace kxjob {
namespace {

/// Only its name is shown.
class SomeSettings : public ConnectionSettings {
public:
    void LoadFromText(const std::string&) override {}
    std::string ADOConnectionString() override { return "Driver=SQLite;Password=secret"; }
    Value Provider() override { return 5; }
    std::string NameSpaceQualifier() override { return "kx_"; }
};

TEST(Argument, KnowsItsNameAndReadsItsVariable) {
    const std::string variable = "{J}";
    const Argument argument("JobGUID", variable);
    EXPECT_STREQ(argument.Name(), "JobGUID");
    EXPECT_EQ(argument.Read(), Value("{J}"));
    EXPECT_FALSE(argument.IsByReference());
}

TEST(Argument, ReadsWhatTheVariableHoldsNow) {
    std::string variable = "before";
    const Argument argument("JobGUID", variable);
    variable = "after";
    EXPECT_EQ(argument.Read(), Value("after"));
}

TEST(Argument, SaysWhetherTheCallerSeesItChanged) {
    double rank = 0;
    const Argument argument = ByReference("JobRank", rank);
    rank = 0.5;
    EXPECT_STREQ(argument.Name(), "JobRank");
    EXPECT_TRUE(argument.IsByReference());
    EXPECT_EQ(argument.Read(), Value(0.5));
}

TEST(Argument, KeepsTheKindOfEachVariable) {
    const std::string text = "text";
    const std::int32_t number = 7;
    const double real = 2.0;
    const bool yes = true;
    const Value null = Null();
    EXPECT_EQ(Argument("a", text).Read(), Value("text"));
    EXPECT_EQ(Argument("a", number).Read(), Value(7));
    EXPECT_EQ(Argument("a", real).Read(), Value(2.0));
    EXPECT_EQ(Argument("a", yes).Read(), Value(true));
    EXPECT_EQ(Argument("a", null).Read(), Value(Null()));
}

TEST(Argument, ShowsObjectsByNameOnly) {
    const Collection options;
    const auto collection = std::make_shared<Collection>();
    const std::shared_ptr<ConnectionSettings> settings = std::make_shared<SomeSettings>();
    const std::shared_ptr<KeyedCollection> map = std::make_shared<testing_support::FakeKeyedCollection>();
    EXPECT_EQ(Argument("a", options).Read().Object()->Name(), "Collection");
    EXPECT_EQ(Argument("a", collection).Read().Object()->Name(), "Collection");
    EXPECT_EQ(Argument("a", settings).Read().Object()->Name(), "ConnectionSettings");
    EXPECT_EQ(Argument("a", map).Read().Object()->Name(), "KeyedCollection");
}

TEST(Argument, KeepsNoObjectAliveThatItHasShown) {
    auto collection = std::make_shared<Collection>();
    const std::weak_ptr<Collection> watched = collection;
    const Value shown = AsValue(collection);
    collection.reset();
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(shown.Object()->Name(), "Collection");
}

TEST(Argument, ShowsAnObjectThatIsNoneAsEmpty) {
    const std::shared_ptr<Collection> collection;
    const std::shared_ptr<ConnectionSettings> settings;
    const std::shared_ptr<KeyedCollection> map;
    EXPECT_TRUE(Argument("a", collection).Read().IsEmpty());
    EXPECT_TRUE(Argument("a", settings).Read().IsEmpty());
    EXPECT_TRUE(Argument("a", map).Read().IsEmpty());
}

TEST(Argument, FollowsAnObjectVariableThatIsSetLater) {
    std::shared_ptr<Collection> candidates;
    const Argument argument = ByReference("Candidates", candidates);
    EXPECT_TRUE(argument.Read().IsEmpty());
    candidates = std::make_shared<Collection>();
    EXPECT_EQ(argument.Read().Object()->Name(), "Collection");
}

TEST(Argument, StandsInAListInTheOrderOfDeclaration) {
    const std::string first = "a";
    const std::int32_t second = 2;
    const ArgumentList list = {{"First", first}, ByReference("Second", second)};
    const Arguments arguments(list.begin(), list.size());
    ASSERT_EQ(arguments.size(), 2U);
    EXPECT_STREQ(arguments[0].Name(), "First");
    EXPECT_STREQ(arguments[1].Name(), "Second");
    EXPECT_TRUE(arguments[1].IsByReference());
    EXPECT_EQ(arguments[1].Read(), Value(2));
}

}  // namespace
}  // namespace kxjob
