#include "defaults/collections/hash_keyed_collection.h"

#include <gtest/gtest.h>

#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

TEST(HashKeyedCollection, FindsAnItemUnderExactlyItsKey) {
    HashKeyedCollection collection;
    collection.Add("first", "Key");
    collection.Add(2, "key");
    collection.Add(Null(), "");
    EXPECT_EQ(collection.Item("Key"), Value("first"));
    EXPECT_EQ(collection.Item("key"), Value(2));
    EXPECT_EQ(collection.Item(""), Value(Null()));
    EXPECT_TRUE(collection.Exists("Key"));
    EXPECT_FALSE(collection.Exists("KEY"));
    EXPECT_FALSE(collection.Exists("Key "));
}

TEST(HashKeyedCollection, KeepsTheFirstItemWhenAKeyComesTwice) {
    HashKeyedCollection collection;
    collection.Add("first", "key");
    try {
        collection.Add("second", "key");
        FAIL() << "nothing was raised";
    } catch (const AutomationError& error) {
        EXPECT_EQ(error.Number(), error_number::kDuplicateKey);
    }
    EXPECT_EQ(collection.Item("key"), Value("first"));
}

TEST(HashKeyedCollection, RaisesInvalidCallForAMissingKey) {
    HashKeyedCollection collection;
    try {
        collection.Item("key");
        FAIL() << "nothing was raised";
    } catch (const AutomationError& error) {
        EXPECT_EQ(error.Number(), error_number::kInvalidCall);
    }
}

}  // namespace
}  // namespace kxjob
