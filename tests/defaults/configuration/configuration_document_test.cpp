#include "defaults/configuration/configuration_document.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "defaults/store/store_test_support.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

using testing_support::ErrorOf;

TEST(ConfigurationDocument, ReadsKeysAndValues) {
    const ConfigurationDocument document("a = 1\nlog.file=/var/log/x y.log \n\tb\t=\tc = d#e\t\n");
    EXPECT_EQ(document.Find("a"), "1");
    EXPECT_EQ(document.Find("log.file"), "/var/log/x y.log");
    EXPECT_EQ(document.Find("b"), "c = d#e");
    EXPECT_EQ(document.Find("c"), std::nullopt);
}

TEST(ConfigurationDocument, PassesOverCommentsAndBlankLines) {
    const ConfigurationDocument document("# a = 1\n\n   \n  \t# no equals sign\nb = 2");
    EXPECT_EQ(document.Find("a"), std::nullopt);
    EXPECT_EQ(document.Find("b"), "2");
}

TEST(ConfigurationDocument, EndsAValueAtACommentBehindABlank) {
    const ConfigurationDocument document("a = 1 # one\nb = x#y\t# z\n");
    EXPECT_EQ(document.Find("a"), "1");
    EXPECT_EQ(document.Find("b"), "x#y");
}

TEST(ConfigurationDocument, TakesACarriageReturnAsABlankBeforeACommentToo) {
    const ConfigurationDocument document("a = 1\r# one\n \r#b = 2\n");
    EXPECT_EQ(document.Find("a"), "1");
    EXPECT_EQ(document.Keys(), std::vector<std::string>{"a"});
}

TEST(ConfigurationDocument, TakesBothKindsOfLineEndAndAByteOrderMark) {
    const ConfigurationDocument document(
        "\xEF\xBB\xBF"
        "a = 1\r\n\r\nb = 2\r\nc = 3");
    EXPECT_EQ(document.Find("a"), "1");
    EXPECT_EQ(document.Find("b"), "2");
    EXPECT_EQ(document.Find("c"), "3");
}

TEST(ConfigurationDocument, KeysDifferInMoreThanLetterCase) {
    const ConfigurationDocument document("adoCONNECTIONstring = x\nA = 1\na = 2\n");
    EXPECT_EQ(document.Find("ADOConnectionString"), "x");
    EXPECT_EQ(document.Find("a"), "2");
    EXPECT_EQ(document.Find("A"), "2");
}

TEST(ConfigurationDocument, AKeyWithoutValueSaysNothing) {
    const ConfigurationDocument document("a = 1\na =\nb =   \n");
    EXPECT_EQ(document.Find("a"), std::nullopt);
    EXPECT_EQ(document.Find("b"), std::nullopt);
    EXPECT_EQ(ConfigurationDocument("").Find("a"), std::nullopt);
}

TEST(ConfigurationDocument, NamesTheLineThatItDoesNotUnderstandAndRepeatsNothingOfIt) {
    const AutomationError error = ErrorOf([] { ConfigurationDocument("a = 1\n# b\nPassword: secret\n"); });
    EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x80040000U + 704));
    EXPECT_EQ(error.Description(), "Line 3 of the configuration is not of the form: key = value");
    EXPECT_EQ(ErrorOf([] { ConfigurationDocument("= value"); }).Description(),
              "Line 1 of the configuration is not of the form: key = value");
}

}  // namespace
}  // namespace kxjob
