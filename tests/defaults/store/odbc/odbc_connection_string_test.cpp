#include "defaults/store/odbc/odbc_connection_string.h"

#include <gtest/gtest.h>

#include "defaults/store/store_test_support.h"

namespace kxjob {
namespace {

using testing_support::ErrorOf;

std::string ForOdbc(const std::string& text) {
    return OdbcConnectionString(ConnectionString(text));
}

TEST(OdbcConnectionString, IsForWhatNamesADriverADataSourceOrAProvider) {
    for (const char* text : {"Driver={PostgreSQL Unicode};Server=h", "dsn=jobs", "FILEDSN=/a.dsn",
                             "Provider=SQLOLEDB;Data Source=h"}) {
        EXPECT_TRUE(IsForOdbc(ConnectionString(text))) << text;
    }
    EXPECT_FALSE(IsForOdbc(ConnectionString("Server=h;Database=jobs")));
    EXPECT_FALSE(IsForOdbc(ConnectionString("")));
}

TEST(OdbcConnectionString, GoesToOdbcAsItIs) {
    for (const char* text : {"DSN=jobs;UID=kx;PWD={a;b}", " dsn = jobs ; pwd = {a}}b}; Option=1;option=2",
                             "Driver={ODBC Driver 18 for SQL Server};Server=tcp:h,1433;Encrypt=yes",
                             "FILEDSN=/etc/jobs.dsn", "Driver=/opt/lib/driver.so;Server=h"}) {
        EXPECT_EQ(ForOdbc(text), text);
    }
}

TEST(OdbcConnectionString, AddsWhatADriverHasToBeTold) {
    EXPECT_EQ(ForOdbc("Driver={PostgreSQL Unicode};Server=h"),
              "Driver={PostgreSQL Unicode};Server=h;LFConversion=0;KeepaliveTime=30;KeepaliveInterval=10;"
              "pqopt={tcp_user_timeout=120000};");
    EXPECT_EQ(ForOdbc("Driver={MariaDB Unicode};Server=h;"),
              "Driver={MariaDB "
              "Unicode};Server=h;CONN_TIMEOUT=15;READ_TIMEOUT=300;WRITE_TIMEOUT=300;");
    EXPECT_EQ(ForOdbc("Driver=FreeTDS;Server=h"),
              "Driver=FreeTDS;Server=h;ClientCharset=UTF-8;TDS_Version=7.4;");
    EXPECT_EQ(ForOdbc("Driver={SQLite3 ODBC Driver};Database=a"),
              "Driver={SQLite3 ODBC Driver};Database=a;NoCreat=1;");
}

TEST(OdbcConnectionString, AddsNothingThatIsThere) {
    for (const char* text :
         {"Driver={MariaDB Unicode};conn_timeout=3;Read_Timeout=0;WRITE_TIMEOUT=7;",
          "Driver={PostgreSQL "
          "ANSI};LFConversion=1;KeepaliveTime=0;KeepaliveInterval=0;pqopt={sslmode=require}",
          "Driver={SQLite3};Database=a;NoCreat=0"}) {
        EXPECT_EQ(ForOdbc(text), text);
    }
}

TEST(OdbcConnectionString, AddsToATranslationToo) {
    EXPECT_EQ(ForOdbc("Provider=SQLOLEDB;Data Source=h"),
              "Driver={FreeTDS};Server=h;ClientCharset=UTF-8;TDS_Version=7.4;");
}

TEST(OdbcConnectionString, RefusesAnUnknownProvider) {
    EXPECT_EQ(ErrorOf([] { ForOdbc("Provider=OraOLEDB.Oracle"); }).Number(),
              static_cast<std::int32_t>(0x80040000U + 704));
}

TEST(OdbcConnectionString, LetsOnlyADriverOfFilesMakeOne) {
    const ConnectionString file("Driver={SQLite3};Database=a");

    EXPECT_TRUE(DriverMakesFiles(file));
    EXPECT_EQ(OdbcCreatingConnectionString(file), "NoCreat=0;Driver={SQLite3};Database=a");
    EXPECT_TRUE(DriverMakesFiles(
        ConnectionString("Provider=MSDASQL;Extended Properties=\"Driver={SQLite3};Database=a\"")));
    EXPECT_FALSE(DriverMakesFiles(ConnectionString("Driver={PostgreSQL Unicode};Server=h")));
    EXPECT_FALSE(DriverMakesFiles(ConnectionString("DSN=jobs")));
}

}  // namespace
}  // namespace kxjob
