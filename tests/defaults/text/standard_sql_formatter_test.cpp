#include "defaults/text/standard_sql_formatter.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "kxjob/array.h"
#include "kxjob/automation_error.h"
#include "kxjob/collection.h"

namespace kxjob {
namespace {

TEST(StandardSqlFormatter, QuotesATextAndDoublesItsQuotes) {
    StandardSqlFormatter formatter;
    EXPECT_EQ(formatter.FormatValue("RUNNING"), "'RUNNING'");
    EXPECT_EQ(formatter.FormatValue("it's ''here'"), "'it''s ''''here'''");
    EXPECT_EQ(formatter.FormatValue(""), "''");
}

TEST(StandardSqlFormatter, LeavesEverythingElseInATextAsItIs) {
    StandardSqlFormatter formatter;
    EXPECT_EQ(formatter.FormatValue("C:\\dir \"x\" -- ; %_ ? {d}\r\n\t\x01"),
              "'C:\\dir \"x\" -- ; %_ ? {d}\r\n\t\x01'");
    EXPECT_EQ(formatter.FormatValue("Gr\xC3\xB6\xC3\x9F"
                                    "e \xF0\x9F\x98\x80"),
              "'Gr\xC3\xB6\xC3\x9F"
              "e \xF0\x9F\x98\x80'");
}

TEST(StandardSqlFormatter, WritesNullAndEmptyAsNull) {
    StandardSqlFormatter formatter;
    EXPECT_EQ(formatter.FormatValue(Value()), "NULL");
    EXPECT_EQ(formatter.FormatValue(Null()), "NULL");
}

TEST(StandardSqlFormatter, WritesBooleansAsOneAndZero) {
    StandardSqlFormatter formatter;
    EXPECT_EQ(formatter.FormatValue(true), "1");
    EXPECT_EQ(formatter.FormatValue(false), "0");
}

TEST(StandardSqlFormatter, WritesWholeNumbersAsDigits) {
    StandardSqlFormatter formatter;
    EXPECT_EQ(formatter.FormatValue(0), "0");
    EXPECT_EQ(formatter.FormatValue(std::numeric_limits<std::int32_t>::min()), "-2147483648");
    EXPECT_EQ(formatter.FormatValue(std::int64_t{9007199254740993}), "9007199254740993");
    EXPECT_EQ(formatter.FormatValue(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
}

TEST(StandardSqlFormatter, WritesADoubleAsItsShortestText) {
    StandardSqlFormatter formatter;
    EXPECT_EQ(formatter.FormatValue(1.0), "1");
    EXPECT_EQ(formatter.FormatValue(-0.1), "-0.1");
    EXPECT_EQ(formatter.FormatValue(1.0 / 3.0), "0.3333333333333333");
    EXPECT_EQ(formatter.FormatValue(1e20), "1e+20");
    EXPECT_EQ(formatter.FormatValue(5e-324), "5e-324");
}

TEST(StandardSqlFormatter, RefusesNumbersThatNoStoreKeeps) {
    StandardSqlFormatter formatter;
    for (const double number : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        try {
            formatter.FormatValue(number);
            ADD_FAILURE() << number << " was accepted";
        } catch (const AutomationError& error) {
            EXPECT_EQ(error.Number(), error_number::kUnstorableText);
        }
    }
}

TEST(StandardSqlFormatter, RefusesTextsThatNoStoreKeeps) {
    StandardSqlFormatter formatter;
    for (const std::string& text :
         {std::string("a\0b", 3), std::string("\xC0\x80"), std::string("\xED\xA0\x80")}) {
        try {
            formatter.FormatValue(text);
            ADD_FAILURE() << "a value was accepted";
        } catch (const AutomationError& error) {
            EXPECT_EQ(error.Number(), error_number::kUnstorableText);
        }
        EXPECT_THROW(formatter.FormatGuid(text), AutomationError);
    }
}

TEST(StandardSqlFormatter, RefusesArraysAndObjectsAsTypeMismatch) {
    StandardSqlFormatter formatter;
    const Value values[] = {RowArray(1), Array::List({1, 2}), ComponentRef(std::make_shared<Collection>())};
    for (const Value& value : values) {
        try {
            formatter.FormatValue(value);
            ADD_FAILURE() << "a value was accepted";
        } catch (const AutomationError& error) {
            EXPECT_EQ(error.Number(), error_number::kTypeMismatch);
        }
    }
}

TEST(StandardSqlFormatter, WritesAGuidAsTheTextThatItIs) {
    StandardSqlFormatter formatter;
    EXPECT_EQ(formatter.FormatGuid("{0A}"), "'{0A}'");
    EXPECT_EQ(formatter.FormatGuid("it's no GUID"), "'it''s no GUID'");
    EXPECT_EQ(formatter.FormatGuid(""), "''");
}

/// Has a database engine read the literals.
class LiteralRoundTrip : public testing::Test {
protected:
    LiteralRoundTrip() {
        sqlite3* opened = nullptr;
        sqlite3_open(":memory:", &opened);
        database_.reset(opened);
    }

    /// Gives `read` the statement that stands on the one row of SELECT literal.
    template <typename Read>
    auto Selected(const Value& value, Read read) {
        const std::string sql = "SELECT " + formatter_.FormatValue(value);
        sqlite3_stmt* prepared = nullptr;
        const int size = static_cast<int>(sql.size());
        EXPECT_EQ(sqlite3_prepare_v2(database_.get(), sql.data(), size, &prepared, nullptr), SQLITE_OK)
            << sql;
        const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(prepared, sqlite3_finalize);
        EXPECT_EQ(sqlite3_step(statement.get()), SQLITE_ROW) << sql;
        return read(statement.get());
    }

    std::mt19937_64 random_{20260301};  // the same values in each run

private:
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> database_{nullptr, sqlite3_close};
    StandardSqlFormatter formatter_;
};

TEST_F(LiteralRoundTrip, KeepsRandomTexts) {
    const std::vector<std::string> pieces{"'",
                                          "\"",
                                          "\\",
                                          "--",
                                          "/*",
                                          "*/",
                                          ";",
                                          "\r\n",
                                          "\t",
                                          "%",
                                          "_",
                                          "a",
                                          "Z",
                                          "0",
                                          " ",
                                          "\xC3\xA4",
                                          "\xE2\x82\xAC",
                                          "?1",
                                          ":x",
                                          "@y",
                                          "{",
                                          "}",
                                          "\x01",
                                          "$z",
                                          "\xF0\x9F\x98\x80"};
    for (int i = 0; i < 500; ++i) {
        std::string text;
        for (auto left = random_() % 40; left > 0; --left) text += pieces[random_() % pieces.size()];
        const std::string read = Selected(text, [](sqlite3_stmt* row) {
            const auto size = static_cast<std::size_t>(sqlite3_column_bytes(row, 0));
            return std::string(reinterpret_cast<const char*>(sqlite3_column_text(row, 0)), size);
        });
        ASSERT_EQ(read, text);
    }
}

TEST_F(LiteralRoundTrip, KeepsRandomWholeNumbers) {
    for (int i = 0; i < 500; ++i) {
        const auto number = static_cast<std::int64_t>(random_() >> (random_() % 64));
        for (const std::int64_t sought : {number, -number}) {
            ASSERT_EQ(Selected(sought, [](sqlite3_stmt* row) { return sqlite3_column_int64(row, 0); }),
                      sought);
        }
    }
}

TEST_F(LiteralRoundTrip, KeepsRandomDoubles) {
    std::uniform_real_distribution<double> mantissa(-1, 1);
    std::uniform_int_distribution<int> exponent(-60, 60);
    for (int i = 0; i < 500; ++i) {
        const double number = std::ldexp(mantissa(random_), exponent(random_));
        ASSERT_EQ(Selected(number, [](sqlite3_stmt* row) { return sqlite3_column_double(row, 0); }), number);
    }
}

}  // namespace
}  // namespace kxjob
