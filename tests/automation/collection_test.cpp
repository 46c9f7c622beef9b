#include "kxjob/collection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "kxjob/automation_error.h"
#include "support/raised_error.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using testing_support::kDuplicateKey;
using testing_support::kInvalidCall;
using testing_support::kSubscriptOutOfRange;
using testing_support::kUnknownMember;
using testing_support::kWrongArgumentCount;
using testing_support::NumberOf;

std::vector<Value> ItemsOf(const Collection& collection) {
    std::vector<Value> items;
    for (const Collection::Entry& entry : collection) items.push_back(entry.item);
    return items;
}

TEST(Collection, CountsFromOneInTheOrderOfAdding) {
    Collection collection;
    EXPECT_EQ(collection.Count(), 0U);
    collection.Add("first", "z");
    collection.Add(2);
    collection.Add(Null(), "a");
    EXPECT_EQ(collection.Count(), 3U);
    EXPECT_EQ(collection.Item(1), Value("first"));
    EXPECT_EQ(collection.Item(2), Value(2));
    EXPECT_EQ(collection.Item(3), Value(Null()));
    EXPECT_EQ(ItemsOf(collection), (std::vector<Value>{"first", 2, Null()}));
}

TEST(Collection, RefusesAnIndexOutsideOfItsCount) {
    Collection collection;
    EXPECT_EQ(NumberOf([&] { static_cast<void>(collection.Item(1)); }), kSubscriptOutOfRange);
    collection.Add("only");
    EXPECT_EQ(NumberOf([&] { static_cast<void>(collection.Item(std::size_t{0})); }), kSubscriptOutOfRange);
    EXPECT_EQ(NumberOf([&] { static_cast<void>(collection.Item(2)); }), kSubscriptOutOfRange);
}

TEST(Collection, FindsItemsByKeyWithoutRegardToLetterCase) {
    Collection collection;
    collection.Add("item", "{ab-CD}");
    EXPECT_EQ(collection.Item("{ab-CD}"), Value("item"));
    EXPECT_EQ(collection.Item("{AB-cd}"), Value("item"));
    EXPECT_TRUE(collection.Exists("{ab-cd}"));
    EXPECT_FALSE(collection.Exists("{ab-cd"));
}

TEST(Collection, FoldsNoOtherLettersThanThoseOfAscii) {
    Collection collection;
    collection.Add("capital", "\xC3\x84");
    EXPECT_FALSE(collection.Exists("\xC3\xA4"));
    // '[' and '{' differ as 'A' and 'a' do.
    collection.Add("bracket", "[");
    EXPECT_FALSE(collection.Exists("{"));
    EXPECT_FALSE(collection.Exists("@"));
}

TEST(Collection, RefusesAKeyThatIsThereAlreadyAndStaysAsItWas) {
    Collection collection;
    collection.Add("item", "Key");
    EXPECT_EQ(NumberOf([&] { collection.Add("other", "kEY"); }), kDuplicateKey);
    EXPECT_EQ(ItemsOf(collection), (std::vector<Value>{"item"}));
    EXPECT_EQ(collection.Item("key"), Value("item"));
}

TEST(Collection, TakesAnyNumberOfItemsWithoutAKey) {
    Collection collection;
    collection.Add("same");
    collection.Add("same", "");
    EXPECT_EQ(collection.Count(), 2U);
    EXPECT_FALSE(collection.Exists(""));
    EXPECT_EQ(NumberOf([&] { static_cast<void>(collection.Item("")); }), kInvalidCall);
}

TEST(Collection, RefusesAMissingKey) {
    Collection collection;
    collection.Add("item", "key");
    EXPECT_EQ(NumberOf([&] { static_cast<void>(collection.Item("other")); }), kInvalidCall);
    EXPECT_EQ(NumberOf([&] { collection.Remove("other"); }), kInvalidCall);
    EXPECT_EQ(collection.Count(), 1U);
}

TEST(Collection, ClosesTheGapThatARemovalLeaves) {
    Collection collection;
    collection.Add("a", "ka");
    collection.Add("b", "kb");
    collection.Add("c", "kc");
    collection.Remove("KB");
    EXPECT_EQ(ItemsOf(collection), (std::vector<Value>{"a", "c"}));
    EXPECT_EQ(collection.Item(2), Value("c"));
    EXPECT_FALSE(collection.Exists("kb"));
    EXPECT_EQ(NumberOf([&] { collection.Remove("kb"); }), kInvalidCall);
    collection.Add("again", "kb");
    EXPECT_EQ(collection.Item(3), Value("again"));
}

TEST(Collection, ReleasesARemovedItem) {
    auto object = std::make_shared<Collection>();
    const std::weak_ptr<Collection> watched = object;
    Collection collection;
    collection.Add(ComponentRef(std::move(object)), "key");
    EXPECT_FALSE(watched.expired());
    collection.Remove("key");
    EXPECT_TRUE(watched.expired());
}

std::string LowerCase(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

TEST(Collection, BehavesAsAPlainListOfPairsDoes) {
    std::mt19937 random(20260305);
    const std::vector<std::string> keys{"a", "A", "b", "B", "key1", "KEY1", "Key2", ""};
    for (int round = 0; round < 100; ++round) {
        Collection collection;
        std::vector<std::pair<Value, std::string>> model;
        for (std::int32_t step = 0; step < 60; ++step) {
            const std::string key = keys[random() % keys.size()];
            const auto place = std::find_if(model.begin(), model.end(), [&](const auto& entry) {
                return !key.empty() && entry.second == LowerCase(key);
            });
            const bool isThere = place != model.end();
            if (random() % 3 != 0) {
                if (isThere) {
                    ASSERT_EQ(NumberOf([&] { collection.Add(step, key); }), kDuplicateKey);
                } else {
                    collection.Add(step, key);
                    model.emplace_back(step, LowerCase(key));
                }
            } else if (isThere) {
                ASSERT_EQ(collection.Item(key), place->first);
                collection.Remove(key);
                model.erase(place);
            } else {
                ASSERT_EQ(NumberOf([&] { collection.Remove(key); }), kInvalidCall);
            }
            ASSERT_EQ(collection.Count(), model.size());
            for (std::size_t i = 0; i < model.size(); ++i) ASSERT_EQ(collection.Item(i + 1), model[i].first);
        }
    }
}

/// The collection as a script or another component sees it.
class LateBoundCollection : public ::testing::Test {
protected:
    Value Call(std::string_view method, const std::vector<Value>& arguments) {
        return object->Call(method, arguments);
    }

    ComponentRef object = std::make_shared<Collection>();
};

TEST_F(LateBoundCollection, IsNamedCollection) {
    EXPECT_EQ(object->Name(), "Collection");
}

TEST_F(LateBoundCollection, NamesItsMembersInTheOrderOfTheirDispatchNumbers) {
    EXPECT_THAT(object->MemberNames(), ::testing::ElementsAre("Count", "Add", "Item", "Remove"));
}

TEST_F(LateBoundCollection, AddsCountsAndRemoves) {
    EXPECT_EQ(object->Get("Count"), Value(0));
    EXPECT_EQ(Call("Add", {"item", "key"}), Value());
    Call("Add", {7, ""});
    EXPECT_EQ(object->Get("Count"), Value(2));
    EXPECT_EQ(Call("Remove", {"KEY"}), Value());
    EXPECT_EQ(object->Get("Count"), Value(1));
    EXPECT_EQ(Call("Item", {1}), Value(7));
}

TEST_F(LateBoundCollection, TakesATextForAKeyAndANumberForAnIndex) {
    Call("Add", {"by index", ""});
    Call("Add", {"by key", "1"});
    EXPECT_EQ(Call("Item", {1}), Value("by index"));
    EXPECT_EQ(Call("Item", {std::int64_t{2}}), Value("by key"));
    EXPECT_EQ(Call("Item", {1.0}), Value("by index"));
    EXPECT_EQ(Call("Item", {"1"}), Value("by key"));
}

TEST_F(LateBoundCollection, RefusesWhatIsNotThere) {
    EXPECT_EQ(NumberOf([&] { Call("Item", {0}); }), kSubscriptOutOfRange);
    EXPECT_EQ(NumberOf([&] { Call("Item", {-1}); }), kSubscriptOutOfRange);
    EXPECT_EQ(NumberOf([&] { Call("Item", {1}); }), kSubscriptOutOfRange);
    EXPECT_EQ(NumberOf([&] { Call("Item", {"key"}); }), kInvalidCall);
    Call("Add", {"item", "other"});
    EXPECT_EQ(NumberOf([&] { Call("Item", {0}); }), kSubscriptOutOfRange);
    EXPECT_EQ(NumberOf([&] { Call("Item", {-1}); }), kSubscriptOutOfRange);
    EXPECT_EQ(NumberOf([&] { Call("Remove", {"key"}); }), kInvalidCall);
}

TEST_F(LateBoundCollection, RefusesAKeyThatIsThereAlready) {
    Call("Add", {"item", "key"});
    EXPECT_EQ(NumberOf([&] { Call("Add", {"other", "key"}); }), kDuplicateKey);
}

TEST_F(LateBoundCollection, RefusesAWrongNumberOfArguments) {
    EXPECT_EQ(NumberOf([&] { Call("Add", {"item"}); }), kWrongArgumentCount);
    EXPECT_EQ(NumberOf([&] { Call("Add", {"item", "key", 1}); }), kWrongArgumentCount);
    EXPECT_EQ(NumberOf([&] { Call("Item", {}); }), kWrongArgumentCount);
    EXPECT_EQ(NumberOf([&] { Call("Remove", {}); }), kWrongArgumentCount);
    EXPECT_EQ(object->Get("Count"), Value(0));
}

TEST_F(LateBoundCollection, RefusesUnknownMembers) {
    EXPECT_EQ(NumberOf([&] { object->Get("Length"); }), kUnknownMember);
    EXPECT_EQ(NumberOf([&] { Call("Clear", {}); }), kUnknownMember);
    EXPECT_EQ(NumberOf([&] { object->Let("Count", 1); }), kUnknownMember);
}

}  // namespace
}  // namespace kxjob
