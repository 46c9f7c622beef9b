#include "security/security_page.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "proof/proof_output.h"

namespace kxjob::testing_support {
namespace {

/// "Suite.Name" of every test in the sources.
std::set<std::string> TestsInTheSources() {
    static const std::regex test(R"(TEST(?:_[FP])?\(\s*(\w+),\s*(\w+)\))");
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(KXJOB_PROJECT "/tests")) {
        if (entry.path().extension() != ".cpp") continue;
        std::ifstream in(entry.path());
        const std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
        for (std::sregex_iterator found(text.begin(), text.end(), test); found != std::sregex_iterator();
             ++found) {
            names.insert((*found)[1].str() + "." + (*found)[2].str());
        }
    }
    return names;
}

/// The paragraphs and list entries behind the first heading of the second level; headings, code and the words
/// in front of a list are none.
std::vector<std::string> Statements(const std::vector<std::string>& page) {
    std::vector<std::string> statements;
    bool isBody = false;
    bool isOpen = false;
    for (const std::string& line : page) {
        if (line.starts_with("## ")) isBody = true;
        const bool isText = isBody && !line.empty() && !line.starts_with('#') && !line.starts_with("    ");
        if (!isText) {
            isOpen = false;
        } else if (isOpen && !line.starts_with("- ")) {
            statements.back() += " " + line;
        } else {
            statements.push_back(line);
            isOpen = true;
        }
    }
    return statements;
}

/// What is wrong with a page, a line each.
std::vector<std::string> FaultsOf(const std::vector<std::string>& page, const std::set<std::string>& tests) {
    static const std::regex mark(R"(<!-- (no promise|test: ([\w., ]+)) -->)");
    static const std::regex name(R"(\w+\.\w+)");
    std::vector<std::string> faults;
    for (const std::string& statement : Statements(page)) {
        std::smatch found;
        if (!std::regex_search(statement, found, mark)) {
            const bool leadsIn = statement.ends_with(':') || statement.starts_with("**PostgreSQL**") ||
                                 statement.starts_with("**MariaDB**") ||
                                 statement.starts_with("Every other text:") ||
                                 statement.starts_with("The password in a connection string is the one");
            if (!leadsIn) faults.push_back("no mark: " + statement);
            continue;
        }
        const std::string named = found[2];
        for (std::sregex_iterator test(named.begin(), named.end(), name); test != std::sregex_iterator();
             ++test) {
            if (!tests.contains(test->str())) faults.push_back("no such test: " + test->str());
        }
    }
    return faults;
}

TEST(SecurityPage, NamesATestForEachPromise) {
    EXPECT_GT(Statements(SecurityPage()).size(), 20U);
    EXPECT_EQ(FaultsOf(SecurityPage(), TestsInTheSources()), std::vector<std::string>());
    const std::vector<std::string> statements = Statements(SecurityPage());
    const auto promises = std::count_if(statements.begin(), statements.end(), [](const std::string& one) {
        return one.find("<!-- test: ") != std::string::npos;
    });
    Prove("promises of SECURITY.md held to tests", static_cast<int>(promises), 14);
}

TEST(SecurityPage, IsRefusedWhenAPromiseHasNoTest) {
    const std::set<std::string> tests{"A.B"};
    EXPECT_EQ(FaultsOf({"## Title", "", "All is well. <!-- test: A.B -->"}, tests).size(), 0U);
    EXPECT_EQ(FaultsOf({"## Title", "", "- All", "  is well."}, tests).size(), 1U);
    EXPECT_EQ(FaultsOf({"## Title", "", "- Well. <!-- test: A.B, A.C -->"}, tests).size(), 1U);
}

}  // namespace
}  // namespace kxjob::testing_support
