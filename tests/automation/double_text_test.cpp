#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <limits>
#include <locale>
#include <random>
#include <regex>
#include <string>

#include "kxjob/value.h"

namespace kxjob {
namespace {

double Parsed(const std::string& text) {
    double number = std::numeric_limits<double>::quiet_NaN();
    const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), number);
    EXPECT_EQ(problem, std::errc()) << text;
    EXPECT_EQ(end, text.data() + text.size()) << text;
    return number;
}

/// Digits from the first that is not 0 on; an exponent's do not count.
std::size_t SignificantDigits(const std::string& text) {
    std::size_t digits = 0;
    for (const char c : text) {
        if (c == 'E') break;
        if (c >= '0' && c <= '9' && (digits > 0 || c != '0')) ++digits;
    }
    return digits;
}

TEST(DoubleText, WritesWholeNumbersWithoutAPoint) {
    EXPECT_EQ(DoubleText(0), "0");
    EXPECT_EQ(DoubleText(-0.0), "0");
    EXPECT_EQ(DoubleText(1), "1");
    EXPECT_EQ(DoubleText(-7), "-7");
    EXPECT_EQ(DoubleText(100), "100");
    EXPECT_EQ(DoubleText(3600), "3600");
    EXPECT_EQ(DoubleText(123456789012345), "123456789012345");
    EXPECT_EQ(DoubleText(-123456789012345), "-123456789012345");
}

TEST(DoubleText, WritesFractionsWithoutTrailingZeros) {
    EXPECT_EQ(DoubleText(0.5), "0.5");
    EXPECT_EQ(DoubleText(-0.25), "-0.25");
    EXPECT_EQ(DoubleText(1.10), "1.1");
    EXPECT_EQ(DoubleText(0.001), "0.001");
    EXPECT_EQ(DoubleText(1.0 / 256), "0.00390625");
}

TEST(DoubleText, RoundsToFifteenSignificantDigits) {
    EXPECT_EQ(DoubleText(1.0 / 3), "0.333333333333333");
    EXPECT_EQ(DoubleText(2.0 / 3), "0.666666666666667");
    EXPECT_EQ(DoubleText(1.0 / 257), "0.00389105058365759");
    EXPECT_EQ(DoubleText(0.1 + 0.2), "0.3");
    EXPECT_EQ(DoubleText(1234567890.123456789), "1234567890.12346");
    EXPECT_EQ(DoubleText(999999999999999.9), "1E+15");
}

TEST(DoubleText, WritesAnExponentOnlyForWhatHasMoreThanFifteenDigits) {
    EXPECT_EQ(DoubleText(100000000000000), "100000000000000");
    EXPECT_EQ(DoubleText(1e15), "1E+15");
    EXPECT_EQ(DoubleText(1e20), "1E+20");
    EXPECT_EQ(DoubleText(-2.5e100), "-2.5E+100");
    EXPECT_EQ(DoubleText(1.5e-20), "1.5E-20");
    EXPECT_EQ(DoubleText(std::numeric_limits<double>::max()), "1.79769313486232E+308");
    EXPECT_EQ(DoubleText(std::numeric_limits<double>::min()), "2.2250738585072E-308");
}

TEST(DoubleText, ParsesBackToFifteenDigitsForAnyNumber) {
    const std::regex plain("-?(0|[1-9][0-9]*)(\\.[0-9]*[1-9])?(E[+-][0-9]{2,3})?");
    std::mt19937_64 random(20260301);
    for (int i = 0; i < 20'000; ++i) {
        // Any bit pattern: every magnitude is as likely as another.
        const auto number = std::bit_cast<double>(static_cast<std::uint64_t>(random()));
        if (!std::isnormal(number)) continue;
        const std::string text = DoubleText(number);
        ASSERT_TRUE(std::regex_match(text, plain)) << text;
        ASSERT_LE(SignificantDigits(text), 15U) << text;
        if (std::abs(number) > 1.7e308) continue;  // rounding up may leave the range
        ASSERT_LE(std::abs(Parsed(text) - number), std::abs(number) * 5.001e-15) << text;
    }
}

TEST(DoubleText, GivesBackExactlyWhatFifteenDigitsCanSay) {
    std::mt19937_64 random(20260302);
    std::uniform_int_distribution<std::int64_t> digits(-999'999'999'999'999, 999'999'999'999'999);
    std::uniform_int_distribution<int> places(0, 15);
    for (int i = 0; i < 20'000; ++i) {
        const double number = Parsed(std::to_string(digits(random)) + "e-" + std::to_string(places(random)));
        ASSERT_EQ(Parsed(DoubleText(number)), number) << DoubleText(number);
    }
}

/// As many countries write numbers.
class CommaPoint : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

/// Both locales of the process are put back, whatever the test does.
class DoubleTextInAnotherLocale : public ::testing::Test {
protected:
    DoubleTextInAnotherLocale() : language_(std::locale()), c_(std::setlocale(LC_ALL, nullptr)) {
        std::locale::global(std::locale(std::locale::classic(), new CommaPoint));  // the locale owns it
    }
    ~DoubleTextInAnotherLocale() override {
        std::locale::global(language_);
        std::setlocale(LC_ALL, c_.c_str());
    }

private:
    std::locale language_;
    std::string c_;
};

TEST_F(DoubleTextInAnotherLocale, KeepsThePointAndGroupsNothing) {
    EXPECT_EQ(DoubleText(1234567.5), "1234567.5");
    EXPECT_EQ(Value(0.5).ToText(), "0.5");
    EXPECT_EQ(Value("1234567.5").ToDouble(), 1234567.5);
}

}  // namespace
}  // namespace kxjob
