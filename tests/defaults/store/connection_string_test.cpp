#include "defaults/store/connection_string.h"

#include <gtest/gtest.h>

#include "defaults/store/store_test_support.h"

namespace kxjob {
namespace {

using testing_support::ErrorOf;

std::string WhyRefused(const std::string& text) {
    const AutomationError error = ErrorOf([&] { ConnectionString parsed(text); });
    EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x80040000U + 704));
    EXPECT_EQ(error.Source(), "kxJob.DataAccess");
    return error.Description();
}

TEST(ConnectionString, ReadsEveryEntry) {
    const ConnectionString parsed("Driver=SQLite;Database=/var/lib/jobs.db");

    EXPECT_EQ(parsed.Value("Driver"), "SQLite");
    EXPECT_EQ(parsed.Value("Database"), "/var/lib/jobs.db");
}

TEST(ConnectionString, FindsAKeyInAnyLetterCase) {
    const ConnectionString parsed("DRIVER=SQLite;database=a.db");

    EXPECT_EQ(parsed.Value("Driver"), "SQLite");
    EXPECT_EQ(parsed.Value("DataBase"), "a.db");
}

TEST(ConnectionString, TrimsBlanksAroundKeysAndPlainValues) {
    const ConnectionString parsed(" Driver =\tSQLite ; Database = my jobs.db  ");

    EXPECT_EQ(parsed.Value("Driver"), "SQLite");
    EXPECT_EQ(parsed.Value("Database"), "my jobs.db");
}

TEST(ConnectionString, KeepsSemicolonsEqualSignsAndBlanksWithinBraces) {
    const ConnectionString parsed("PWD={ a;b=c };Database=x");

    EXPECT_EQ(parsed.Value("PWD"), " a;b=c ");
    EXPECT_EQ(parsed.Value("Database"), "x");
}

TEST(ConnectionString, ReadsADoubledBraceAsOne) {
    EXPECT_EQ(ConnectionString("PWD={a}}b}}};Server=h").Value("PWD"), "a}b}");
}

TEST(ConnectionString, ReadsValuesInDoubleQuotes) {
    const ConnectionString parsed("Database=\"a;b \"\"c\"\"\" ;Server=h");

    EXPECT_EQ(parsed.Value("Database"), "a;b \"c\"");
    EXPECT_EQ(parsed.Value("Server"), "h");
}

TEST(ConnectionString, TakesBracesAndQuotesInsideAPlainValueAsTheyAre) {
    EXPECT_EQ(ConnectionString("Database=a{b}\"c").Value("Database"), "a{b}\"c");
}

TEST(ConnectionString, KeepsEqualSignsOfAPlainValue) {
    EXPECT_EQ(ConnectionString("pqopt=target_session_attrs=read-write").Value("pqopt"),
              "target_session_attrs=read-write");
}

TEST(ConnectionString, LetsTheFirstOfEqualKeysCount) {
    EXPECT_EQ(ConnectionString("Database=first;DATABASE=second").Value("Database"), "first");
}

TEST(ConnectionString, SkipsEmptyEntries) {
    const ConnectionString parsed(";; Driver=SQLite;; ;Database=a; ");

    EXPECT_EQ(parsed.Value("Driver"), "SQLite");
    EXPECT_EQ(parsed.Value("Database"), "a");
}

TEST(ConnectionString, TellsAnEmptyValueFromAMissingKey) {
    const ConnectionString parsed("Database=;PWD={}");

    EXPECT_TRUE(parsed.Has("Database"));
    EXPECT_TRUE(parsed.Has("pwd"));
    EXPECT_FALSE(parsed.Has("Driver"));
    EXPECT_EQ(parsed.Value("Database"), "");
    EXPECT_EQ(parsed.Value("Driver"), "");
}

TEST(ConnectionString, TakesTheEmptyText) {
    EXPECT_FALSE(ConnectionString("").Has("Driver"));
}

TEST(ConnectionString, RefusesAnEntryWithoutEqualSign) {
    EXPECT_EQ(WhyRefused("Driver=SQLite;store.db"),
              "[08001] The connection could not be opened: entry 2 of the connection string has no \"=\"");
    EXPECT_EQ(WhyRefused("Driver;Database=a"),
              "[08001] The connection could not be opened: entry 1 of the connection string has no \"=\"");
}

TEST(ConnectionString, RefusesAnEntryWithoutKey) {
    EXPECT_EQ(
        WhyRefused("Driver=SQLite; =store.db"),
        "[08001] The connection could not be opened: entry 2 of the connection string has no key before its "
        "\"=\"");
}

TEST(ConnectionString, RefusesAnUnclosedBraceAndAnUnclosedQuote) {
    EXPECT_EQ(
        WhyRefused("Database={a;b"),
        "[08001] The connection could not be opened: entry 1 of the connection string has no closing brace");
    EXPECT_EQ(
        WhyRefused("Database={a}}"),
        "[08001] The connection could not be opened: entry 1 of the connection string has no closing brace");
    EXPECT_EQ(
        WhyRefused("Database=\"a;b"),
        "[08001] The connection could not be opened: entry 1 of the connection string has no closing quote");
}

TEST(ConnectionString, RefusesTextBehindAClosingBrace) {
    EXPECT_EQ(
        WhyRefused("Database={a}b;Driver=SQLite"),
        "[08001] The connection could not be opened: entry 1 of the connection string has text behind its "
        "closing brace or quote");
}

TEST(ConnectionString, RefusesANulCharacter) {
    EXPECT_EQ(WhyRefused(std::string("Database=a\0b", 12)),
              "[08001] The connection could not be opened: the connection string holds a NUL character");
}

TEST(ConnectionString, NeverShowsAPieceOfAPassword) {
    // Each holds a password that is not properly enclosed, so that a part of it looks like another entry.
    for (const char* text : {"PWD=top;secret", "Password={topsecret", "pwd=\"topsecret", "PWD={top}secret",
                             "PWD=a;secret", "PWD=a;=secret", "PWD=a;secret={b"}) {
        EXPECT_EQ(WhyRefused(text).find("secret"), std::string::npos) << text;
        EXPECT_EQ(WhyRefused(text).find("top"), std::string::npos) << text;
    }
}

}  // namespace
}  // namespace kxjob
