#include "defaults/text/standard_input_guard.h"

#include <gtest/gtest.h>

#include <string>

#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

/// The description of the refusal; empty when the value is accepted.
std::string Refusal(const std::string& value, const std::string& parameterName) {
    try {
        StandardInputGuard().CheckParameter(value, parameterName);
        return {};
    } catch (const AutomationError& error) {
        EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x80040000U + 701));
        EXPECT_EQ(error.Source(), "kxJob.InputGuard");
        return error.Description();
    }
}

TEST(StandardInputGuard, AcceptsWhatIsHarmlessInAnyParameter) {
    const char* const harmless[] = {"",
                                    "RUNNING",
                                    "{0A1B-2C3D}",
                                    "<a>&</a>",
                                    "\"x\" [y] `z`",
                                    "- - / * -/",
                                    "50 %",
                                    "a\\b",
                                    "x=y, (z)",
                                    "Gr\xC3\xB6\xC3\x9F"
                                    "e",
                                    "*",
                                    "-"};
    for (const char* value : harmless) EXPECT_EQ(Refusal(value, "JobGUID"), "") << value;
}

TEST(StandardInputGuard, NamesTheParameterAndWhatItHolds) {
    EXPECT_EQ(Refusal("it's", "JobGUID"), "The parameter JobGUID is refused: it holds a single quote (')");
    EXPECT_EQ(Refusal("a;b", "StateID"), "The parameter StateID is refused: it holds a semicolon (;)");
    EXPECT_EQ(Refusal("a--b", "JobGUID"), "The parameter JobGUID is refused: it holds the comment mark --");
    EXPECT_EQ(Refusal("a/*b", "JobGUID"), "The parameter JobGUID is refused: it holds the comment mark /*");
    EXPECT_EQ(Refusal("a*/b", "JobGUID"), "The parameter JobGUID is refused: it holds the comment mark */");
    EXPECT_EQ(Refusal("kx_--", "NameQualifier"),
              "The parameter NameQualifier is refused: it holds the comment mark --");
}

TEST(StandardInputGuard, NamesTheFirstOfSeveralFindings) {
    EXPECT_EQ(Refusal("a--b;c'", "JobGUID"),
              "The parameter JobGUID is refused: it holds the comment mark --");
}

TEST(StandardInputGuard, ShowsControlCharactersAsNumbers) {
    EXPECT_EQ(Refusal("a\nb", "JobGUID"),
              "The parameter JobGUID is refused: it holds the control character 0x0A");
    EXPECT_EQ(Refusal("\x7F", "JobGUID"),
              "The parameter JobGUID is refused: it holds the control character 0x7F");
}

TEST(StandardInputGuard, RefusesEveryControlCharacterAnywhere) {
    for (int code = 0; code < 0x20; ++code) {
        const std::string value = std::string("ab") + static_cast<char>(code);
        EXPECT_NE(Refusal(value, "JobGUID"), "") << code;
        EXPECT_NE(Refusal(value, "NameQualifier"), "") << code;
    }
}

class QualifierName : public testing::TestWithParam<const char*> {};

TEST_P(QualifierName, AcceptsDottedNames) {
    const char* const names[] = {"",
                                 "kx_",
                                 "dbo.",
                                 "dbo.kx_",
                                 "srv.db.dbo.",
                                 "2nd_$#",
                                 "\"My Schema\".app_",
                                 "[My Schema].[a-b].",
                                 "`my schema`.x",
                                 "[dbo].",
                                 "\"Gr\xC3\xB6\xC3\x9F"
                                 "e\".kx_"};
    for (const char* name : names) EXPECT_EQ(Refusal(name, GetParam()), "") << name;
}

TEST_P(QualifierName, RefusesEverythingElse) {
    const char* const others[] = {
        "a b",      // a blank outside quotes
        " kx_",     //
        ".kx_",     // nothing in front of a dot
        "db..kx_",  //
        "a,b",      //
        "a(b",      //
        "job WHERE 1=1 OR jobguid = kx_",
        "\"open",      // a quote without its partner
        "[open",       //
        "`open",       //
        "open]",       //
        "\"\".a",      // nothing between the quotes
        "\"a\"b",      // something behind a quoted part
        "a\"b\"",      // something in front of one
        "\"a\"\"b\"",  // a quote within quotes
        "[a\"b]",      // another engine's quote within quotes
        "\"a`b\"",     //
        "[a]]b]",      //
        "a-b",         //
        "<a>",         //
        "Gr\xC3\xB6\xC3\x9F"
        "e",
    };
    for (const char* name : others) {
        EXPECT_EQ(Refusal(name, GetParam()),
                  std::string("The parameter ") + GetParam() +
                      " is refused: it is not a dotted name of plain or quoted parts")
            << name;
    }
}

TEST_P(QualifierName, RefusesAQuotedPartThatATableNameWouldFollow) {
    for (const char* name : {"[dbo]", "\"kx_\"", "`kx_`", "main.[kx_]", "\"a.b\".\"c\""}) {
        EXPECT_EQ(Refusal(name, GetParam()),
                  "The parameter " + std::string(GetParam()) +
                      " is refused: it is not a dotted name of plain or quoted parts")
            << name;
    }
}

TEST_P(QualifierName, RefusesQuotedPartsThatAreNoText) {
    EXPECT_EQ(Refusal("\"\xE9\".kx_", GetParam()),
              std::string("The parameter ") + GetParam() + " is refused: it has invalid UTF-8 at byte 2");
}

TEST_P(QualifierName, ObeysTheGeneralRefusalsWithinQuotesToo) {
    for (const char* name : {"[a;b].", "\"a--b\".", "`a'b`.", "[a/*b].", "\"a\tb\"."}) {
        EXPECT_NE(Refusal(name, GetParam()), "") << name;
    }
}

INSTANTIATE_TEST_SUITE_P(StandardInputGuard, QualifierName, testing::Values("NameQualifier", "NameQualfier"));

}  // namespace
}  // namespace kxjob
