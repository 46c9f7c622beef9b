#include "defaults/store/odbc/ole_db.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "defaults/store/store_test_support.h"

namespace kxjob {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing_support::ErrorOf;

std::string AsOdbc(const std::string& text) {
    return OleDbAsOdbc(ConnectionString(text));
}

TEST(OleDb, IsKnownByItsProvider) {
    EXPECT_TRUE(IsOleDb(ConnectionString("provider=SQLOLEDB;Data Source=h")));
    EXPECT_FALSE(IsOleDb(ConnectionString("Driver={FreeTDS};Server=h")));
    EXPECT_FALSE(IsOleDb(ConnectionString("DSN=jobs")));
}

TEST(OleDb, BecomesADriverAndItsKeywordsForSqlServer) {
    EXPECT_EQ(AsOdbc("Provider=SQLOLEDB;Data Source=h,1433;Initial Catalog=jobs;User ID=kx;Password=top"),
              "Driver={FreeTDS};Server={h,1433};Database=jobs;UID=kx;PWD=top;");
    EXPECT_EQ(AsOdbc("PROVIDER=sqlncli11.1;Server=h;Database=jobs;UID=kx;PWD=top;Application Name=Jobs;"),
              "Driver={FreeTDS};Server=h;Database=jobs;UID=kx;PWD=top;APP=Jobs;");
    EXPECT_EQ(AsOdbc("Provider=MSOLEDBSQL19;Data Source=h;Use Encryption for Data=Mandatory;"
                     "Trust Server Certificate=Yes"),
              "Driver={FreeTDS};Server=h;Encrypt=Mandatory;TrustServerCertificate=Yes;");
}

TEST(OleDb, AsksForATrustedConnectionWhereSecurityIsIntegrated) {
    for (const char* text :
         {"Provider=SQLOLEDB;Integrated Security=SSPI", "Provider=SQLOLEDB;Integrated Security=true",
          "Provider=SQLOLEDB;Trusted_Connection=yes"}) {
        EXPECT_EQ(AsOdbc(text), "Driver={FreeTDS};Trusted_Connection=Yes;") << text;
    }
    EXPECT_EQ(AsOdbc("Provider=SQLOLEDB;Integrated Security=false;UID=a"), "Driver={FreeTDS};UID=a;");
}

TEST(OleDb, UsesTheDriverThatIsNamed) {
    EXPECT_EQ(AsOdbc("Provider=SQLOLEDB;Driver={ODBC Driver 18 for SQL Server};Data Source=h"),
              "Driver={ODBC Driver 18 for SQL Server};Server=h;");
}

TEST(OleDb, LeavesOutWhatHasNoCounterpartAndHandsOnWhatItDoesNotKnow) {
    EXPECT_EQ(
        AsOdbc("Provider=SQLOLEDB;Persist Security Info=True;Connect Timeout=5;TDS_Version=7.4;Port=1433"),
        "Driver={FreeTDS};tds_version=7.4;port=1433;");
}

TEST(OleDb, KeepsEveryCharacterOfAValue) {
    EXPECT_EQ(AsOdbc("Provider=SQLOLEDB;Password={a;b}}c=\"d'};User ID=\" e \""),
              "Driver={FreeTDS};PWD={a;b}}c=\"d'};UID={ e };");

    const ConnectionString parsed(AsOdbc("Provider=SQLOLEDB;Password={a;b}}c=\"d'};User ID=\" e \""));
    EXPECT_EQ(parsed.Value("PWD"), "a;b}c=\"d'");
    EXPECT_EQ(parsed.Value("UID"), " e ");
}

TEST(OleDb, BecomesADataSourceForTheOdbcProvider) {
    EXPECT_EQ(AsOdbc("Provider=MSDASQL.1;Data Source=jobs;User ID=kx;Password=top;Initial Catalog=db"),
              "DSN=jobs;UID=kx;PWD=top;Database=db;");
    EXPECT_EQ(AsOdbc("Provider=MSDASQL;Driver={MariaDB Unicode};Server=h;UID=kx"),
              "Driver={MariaDB Unicode};server=h;uid=kx;");
}

TEST(OleDb, TakesTheExtendedPropertiesOfTheOdbcProviderAsTheyAre) {
    EXPECT_EQ(
        AsOdbc("Provider=MSDASQL;Extended Properties=\"Driver={SQLite3};Database=/a b.db\";Password=top"),
        "Driver={SQLite3};Database=/a b.db;PWD=top;");
}

TEST(OleDb, RefusesEveryOtherProviderWithoutShowingAnything) {
    for (const char* text : {"Provider=OraOLEDB.Oracle;Data Source=h;Password=secret",
                             "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=a.mdb;Password=secret",
                             "Provider=;Password=secret", "Provider=secret"}) {
        const AutomationError error = ErrorOf([&] { AsOdbc(text); });
        EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x80040000U + 704)) << text;
        EXPECT_THAT(error.Description(), HasSubstr("SQLOLEDB, SQLNCLI, MSOLEDBSQL")) << text;
        EXPECT_THAT(error.Description(), Not(HasSubstr("secret"))) << text;
    }
}

}  // namespace
}  // namespace kxjob
