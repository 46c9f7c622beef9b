#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "contract/contract_engine.h"
#include "kxjob/array.h"
#include "kxjob/automation_error.h"
#include "kxjob/caller_texts.h"
#include "kxjob/store.h"
#include "method_table.h"
#include "seeded/seeded_store.h"
#include "support/every_method.h"

namespace kxjob::command {
namespace {

using testing_support::ContractEngine;
using testing_support::ContractStore;

/// Short enough for every column, so that no store has another reason to refuse them.
const std::vector<std::string>& StorableTexts() {
    static const std::vector<std::string> texts = {"'; DROP TABLE sentinel; --",
                                                   "\\'; DELETE FROM sentinel; -- ",
                                                   "/* ? */ :a $1 $$ # %s ;",
                                                   "x {call y(?)} {d '2026-03-01'}",
                                                   "a\r\nb\tc\x1A\x1B",
                                                   "\U0001F600 \uFEFF \u00E9",
                                                   "`b` \"d\" [x] ''"};
    return texts;
}

const std::vector<std::string>& UnstorableTexts() {
    static const std::vector<std::string> texts = {std::string("a\0b", 3), "\xED\xA0\x80", "\xFF"};
    return texts;
}

using Argument = std::pair<std::string, std::string>;  // method, argument
using Place = std::pair<std::string, std::string>;     // table, column

/// Where an argument is kept as it is given.
std::optional<Place> PlaceOf(const Argument& argument) {
    static const std::map<Argument, Place> places = {
        {{"RegisterJobTask", "Description"}, {"jobtask", "description"}},
        {{"RegisterJobTask", "User"}, {"jobtask", "usercontext"}},
        {{"RegisterJobTask", "MachineName"}, {"jobtask", "machine"}},
        {{"UpdateTaskRegistration", "LastJobItem"}, {"jobtask", "lastjobitem"}},
        {{"UpdateTaskRegistration", "JobTaskStateID"}, {"jobtask", "jobtaskstateid"}},
        {{"UpdateJobTaskLock", "LockGUID"}, {"jobtask", "lockguid"}},
        {{"UpdateTaskCommand", "Command"}, {"jobtask", "command"}},
        {{"CreateJob", "Description"}, {"job", "description"}},
        {{"CreateJob", "Parameters"}, {"job", "parameters"}},
        {{"CreateJobItem", "IdentifierGUID"}, {"JobItem", "identifier"}},
        {{"CreateJobItem", "Data"}, {"JobItem", "data"}},
        {{"CreateSimpleJobItems", "IdentifierGUIDs"}, {"JobItem", "identifier"}},
        {{"AppendJobFailureNote", "AdditionalNote"}, {"job", "failurenote"}},
        {{"AppendJobItemFailureNote", "AdditionalNote"}, {"JobItem", "failurenote"}},
    };
    const auto found = places.find(argument);
    if (found == places.end()) return std::nullopt;
    return found->second;
}

/// One store, whose every method is called with one hostile text at a time.
class HostileArguments : public testing::TestWithParam<ContractEngine> {
protected:
    void SetUp() override {
        if (!GetParam().whyMissing.empty()) GTEST_SKIP() << GetParam().whyMissing;
        store_ = GetParam().makeStore();
        connection_ = store_->ConnectionString();
        Store(connection_, GetParam().provider, "").CreateDatabase();
        Store sentinel(connection_, GetParam().provider, "");
        sentinel.Execute("CREATE TABLE sentinel (n integer)");
        sentinel.Execute("INSERT INTO sentinel (n) VALUES (7)");
    }

    /// Arguments that a method takes.
    GivenArguments SoundArguments(const Method& method) const {
        using namespace testing_support;  // the keys of the seeded store
        const std::map<std::string, std::string> byName = {{"ConnectionString", connection_},
                                                           {"Provider", std::to_string(GetParam().provider)},
                                                           {"NameQualifier", qualifier_},
                                                           {"NameQualfier", qualifier_},
                                                           {"JobGUID", kJobGuid},
                                                           {"JobTaskGUID", kTaskGuid},
                                                           {"JobItemGUID", kItemGuid},
                                                           {"OldLockGUID", kLockGuid},
                                                           {"GUID", NewGuid()},
                                                           {"JobTypeID", kJobType},
                                                           {"StateId", "RUNNING"},
                                                           {"IdentifierGUIDs", R"(["an identifier"])"}};
        const std::map<std::string, std::string> byKind = {{"TEXT", "a text"},     {"TEXT OR JSON", "a text"},
                                                           {"WHOLE NUMBER", "1"},  {"NUMBER", "60"},
                                                           {"TRUE|FALSE", "true"}, {"JSON OBJECT", "{}"}};
        GivenArguments given;
        for (const MethodArgument& argument : method.arguments) {
            const auto named = byName.find(argument.name);
            given[argument.name] = named != byName.end() ? named->second : byKind.at(argument.kind);
        }
        return given;
    }

    /// The error's number, 0 for none.
    static std::int32_t Call(const Method& method, const GivenArguments& given) {
        JobHelper helper;
        try {
            method.prepare(given)(helper);
        } catch (const AutomationError& error) {
            return error.Number();
        }
        return 0;
    }

    void ExpectNothingWasExecuted() const {
        const Value rows = Store(connection_, GetParam().provider, "").Query("SELECT n FROM sentinel");
        ASSERT_TRUE(rows.IsRowArray());
        EXPECT_EQ(rows.Rows().Rows(), 1);
        EXPECT_EQ(rows.Rows().Cell(0, 0), Value(7));
    }

    bool IsKept(const Place& place, const std::string& text) const {
        Store store(connection_, GetParam().provider, qualifier_);
        const Value rows = store.Query("SELECT " + place.second + " FROM " + store.Table(place.first));
        for (std::int32_t row = 0; row < rows.Rows().Rows(); ++row) {
            const std::string kept = rows.Rows().Cell(0, row).ToJoinedText();
            if (place.second == "failurenote" ? kept.find(text) != std::string::npos : kept == text)
                return true;
        }
        return false;
    }

    static bool TakesText(const MethodArgument& argument) {
        return argument.kind.starts_with("TEXT") && argument.name != "ConnectionString";
    }

    std::unique_ptr<ContractStore> store_;
    std::string connection_;
    std::string qualifier_;
};

TEST_P(HostileArguments, AreKeptUnchangedOrRefusedAndNeverExecuted) {
    int tried = 0;
    int number = 0;
    for (const Method& method : Methods()) {
        qualifier_ = "h" + std::to_string(++number) + "_";
        testing_support::SeedStore(connection_, qualifier_, GetParam().provider);
        for (const MethodArgument& argument : method.arguments) {
            if (!TakesText(argument)) continue;
            for (const std::string& text : StorableTexts()) {
                SCOPED_TRACE(method.name + " " + argument.name + ": " + text);
                GivenArguments given = SoundArguments(method);
                given[argument.name] = argument.name == "IdentifierGUIDs" ? Json::array({text}).dump() : text;
                const std::int32_t error = Call(method, given);
                EXPECT_NE(error, error_number::kStatementFailed);
                EXPECT_NE(error, error_number::kUnstorableText);
                const auto place = PlaceOf({method.name, argument.name});
                if (place) {
                    EXPECT_EQ(error, 0);
                    EXPECT_TRUE(IsKept(*place, text));
                }
                ++tried;
            }
        }
        ExpectNothingWasExecuted();
    }
    EXPECT_EQ(number, 35);
    EXPECT_GT(tried, 500);
    RecordProperty("texts_tried", tried);
}

TEST_P(HostileArguments, ThatNoStoreCanKeepNeverReachIt) {
    int number = 0;
    for (const Method& method : Methods()) {
        qualifier_ = "h" + std::to_string(++number) + "_";
        testing_support::SeedStore(connection_, qualifier_, GetParam().provider);
        for (const MethodArgument& argument : method.arguments) {
            if (!TakesText(argument) || argument.name == "IdentifierGUIDs")
                continue;  // JSON holds no such text
            for (const std::string& text : UnstorableTexts()) {
                SCOPED_TRACE(method.name + " " + argument.name);
                GivenArguments given = SoundArguments(method);
                given[argument.name] = text;
                const std::int32_t error = Call(method, given);
                EXPECT_NE(error, error_number::kStatementFailed);
                if (PlaceOf({method.name, argument.name})) {
                    EXPECT_EQ(error, error_number::kUnstorableText);
                }
            }
        }
        ExpectNothingWasExecuted();
    }
}

INSTANTIATE_TEST_SUITE_P(Engines, HostileArguments, testing::ValuesIn(testing_support::EveryEngine()),
                         testing_support::EngineName);

}  // namespace
}  // namespace kxjob::command
