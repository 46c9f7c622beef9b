#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "apps/call_fixture.h"

namespace kxjob::command {
namespace {

using testing_support::Finished;

struct WrongUsage {
    const char* meaning;
    std::vector<std::string> arguments;
    const char* sentence;
};

void PrintTo(const WrongUsage& usage, std::ostream* out) {
    *out << usage.meaning;
}

class CallUsage : public CallCommand, public testing::WithParamInterface<WrongUsage> {};

TEST_P(CallUsage, IsRefusedWithOneSentenceAndNothingElse) {
    const Finished finished = Run(GetParam().arguments);
    EXPECT_EQ(finished.exitStatus, 2);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(finished.err, std::string(GetParam().sentence) + "\n");
}

constexpr const char* kNoJson = "The value of --IdentifierGUIDs is wrong: it is no JSON.";

/// All that CreateSimpleJobItems wants, its array as given.
WrongUsage WrongArray(const char* meaning, const char* array, const char* sentence) {
    return {meaning,
            {"call", "CreateSimpleJobItems", "--ConnectionString", "x", "--Provider", "5", "--NameQualifier",
             "", "--JobGUID", "j", "--IdentifierGUIDs", array},
            sentence};
}

/// All that UnRegisterJobTaskIndicatingStatus wants, its Boolean as given.
WrongUsage WrongBoolean(const char* meaning, const char* boolean) {
    return {meaning,
            {"call", "UnRegisterJobTaskIndicatingStatus", "--ConnectionString", "x", "--NameQualifier", "",
             "--JobTaskGUID", "t", "--Succeeded", boolean},
            "The value of --Succeeded is wrong: it must be true or false."};
}

WrongUsage WrongProvider(const char* meaning, const char* provider) {
    return {meaning,
            {"call", "GetJob", "--ConnectionString", "x", "--Provider", provider, "--NameQualifier", ""},
            "The value of --Provider is wrong: it must be a whole number that fits 32 bits."};
}

WrongUsage WrongOptions(const char* meaning, const char* options, const char* sentence) {
    return {meaning,
            {"call", "JobTableCreationScript", "--Provider", "5", "--NameQualifier", "", "--providerOptions",
             options},
            sentence};
}

INSTANTIATE_TEST_SUITE_P(
    Wrong, CallUsage,
    testing::Values(
        WrongUsage{"no sub-command", {}, "A subcommand is required"},
        WrongUsage{"no method", {"call"}, "METHOD is required"},
        WrongUsage{"unknown method", {"call", "Nope"}, "There is no method Nope."},
        WrongUsage{"empty method", {"call", ""}, "There is no method ."},
        WrongUsage{"method in another letter case", {"call", "getjob"}, "There is no method getjob."},
        WrongUsage{
            "private method", {"call", "piAdminHistoryWrite"}, "There is no method piAdminHistoryWrite."},
        WrongUsage{"unknown argument",
                   {"call", "IsJobRunning", "--StateID", "QUEUED"},
                   "The method IsJobRunning has no argument --StateID."},
        WrongUsage{"argument of another method",
                   {"call", "Version", "--Provider", "5"},
                   "The method Version has no argument --Provider."},
        WrongUsage{"value without a name",
                   {"call", "IsJobRunning", "QUEUED"},
                   "A value stands without a name: arguments of IsJobRunning are given as --Name value."},
        WrongUsage{"name with one dash",
                   {"call", "IsJobRunning", "-StateId", "QUEUED"},
                   "A value stands without a name: arguments of IsJobRunning are given as --Name value."},
        WrongUsage{"name without value",
                   {"call", "IsJobRunning", "--StateId"},
                   "The argument --StateId has no value."},
        WrongUsage{"argument twice",
                   {"call", "IsJobRunning", "--StateId", "QUEUED", "--StateId", "QUEUED"},
                   "The argument --StateId is given twice."},
        WrongUsage{
            "required argument missing", {"call", "IsJobRunning"}, "The argument --StateId is missing."},
        WrongUsage{"one of many missing",
                   {"call", "GetJob", "--ConnectionString", "x", "--NameQualifier", ""},
                   "The argument --Provider is missing."},
        WrongProvider("a word as number", "five"), WrongProvider("an empty number", ""),
        WrongProvider("a fraction", "5.5"), WrongProvider("a whole fraction", "5.0"),
        WrongProvider("33 bits", "4294967296"), WrongProvider("one too many", "2147483648"),
        WrongProvider("blanks", " 5"),
        WrongUsage{
            "a duration that is no number",
            {"call", "GetNewLockExcludingInterlopers", "--ConnectionString", "x", "--NameQualifier", "",
             "--JobGUID", "j", "--JobTaskGUID", "t", "--OldLockGUID", "o", "--NewLockDuration", "1,5"},
            "The value of --NewLockDuration is wrong: it must be a number."},
        WrongBoolean("an empty Boolean", ""), WrongBoolean("a number as Boolean", "2"),
        WrongArray("an array that does not end", "[1", kNoJson),
        WrongArray("a brace that is no JSON", "{x", kNoJson),
        WrongArray("a GUID that is too short", "{01234567-89AB-CDEF-0123-456789ABCDE}", kNoJson),
        WrongArray(
            "an object that is no value", R"({"a":1})",
            R"(The value of --IdentifierGUIDs is wrong: a JSON object that stands for a value is {"lower":n,"items":[...]} or )"
            R"({"empty":true}.)"),
        WrongArray("an array with indexes of more than 32 bits", R"({"lower":2147483647,"items":[1,2]})",
                   "The value of --IdentifierGUIDs is wrong: the indexes of an array are whole numbers of 32 "
                   "bits."),
        WrongOptions("options that are no JSON", "a=b",
                     "The value of --providerOptions is wrong: it is no JSON."),
        WrongOptions("options that are no object", "[]",
                     "The value of --providerOptions is wrong: it must be a JSON object."),
        WrongUsage{"journal without a file",
                   {"call", "Version", "--explain"},
                   "The argument --explain has no value."},
        WrongUsage{"journal twice",
                   {"call", "Version", "--explain", "/dev/null", "--explain", "/dev/null"},
                   "The argument --explain is given twice."},
        WrongUsage{"journal in a folder that is not there",
                   {"call", "Version", "--explain", "/nowhere/at/all/journal"},
                   "The file for --explain cannot be written: No such file or directory."},
        WrongUsage{"journal in place of a folder",
                   {"call", "Version", "--explain", "/tmp"},
                   "The file for --explain cannot be written: Is a directory."}));

TEST_F(CallOnStore, DoesNothingWhenTheJournalCannotBeWritten) {
    const Finished finished = CallStore("CreateJob", {{"GUID", kJob},
                                                      {"JobTypeID", "IMPORT"},
                                                      {"Description", ""},
                                                      {"ApplicationStateGUID", kState},
                                                      {"Parameters", ""},
                                                      {"TotalItemCount", "1"},
                                                      {"explain", folder.File("no folder/journal")}});
    EXPECT_EQ(finished.exitStatus, 2);
    EXPECT_TRUE(store.Query("SELECT jobguid FROM kx_job").IsEmpty());
}

}  // namespace
}  // namespace kxjob::command
