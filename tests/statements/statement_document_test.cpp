#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <set>

#include "contract/native/file_engines.h"
#include "proof/proof_output.h"
#include "statements/crowded_store.h"
#include "statements/document.h"
#include "statements/statement_places.h"
#include "statements/whole_reads.h"
#include "support/every_method.h"

namespace kxjob::testing_support {
namespace {

constexpr const char* kDocument = KXJOB_SOURCE_FOLDER "/docs/statements.md";

std::string TextOf(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

const Catalogue& TheCatalogue() {
    static const Catalogue catalogue = RecordCatalogue();
    return catalogue;
}

/// How many plans of a method's statements go by an index.
struct Served {
    std::string method;
    int statements = 0;
    int byIndex = 0;
    int whole = 0;
};

std::string TableOf(const std::string& engine, const std::vector<Served>& all) {
    std::string text = "## Statements on " + engine +
                       "\n\n| method | statements | by an index | whole tables |\n|---|---|---|---|\n";
    for (const Served& one : all) {
        text += "| " + one.method + " | " + std::to_string(one.statements) + " | " +
                std::to_string(one.byIndex) + " | " + std::to_string(one.whole) + " |\n";
    }
    return text;
}

class StatementDocumentOn : public testing::TestWithParam<ContractEngine> {
protected:
    void SetUp() override {
        if (!GetParam().whyMissing.empty()) GTEST_SKIP() << GetParam().whyMissing;
    }

    /// The plan of each statement, as a row. A whole table that is read without a reason fails the test.
    std::vector<std::string> RowsOfPlans() {
        CrowdedStore store(GetParam());
        std::vector<std::string> rows;
        for (const CataloguedFamily& family : TheCatalogue().families) {
            for (const CataloguedMethod& method : family.methods) {
                Served served{.method = method.name};
                for (const CataloguedStatement& statement : method.statements) {
                    const QueryPlan plan =
                        PlanOf(store.Own(), GetParam().provider, CrowdedStore::Fitting(statement.sent));
                    Count(served, statement, plan);
                    rows.push_back(PlanRow(GetParam().engineName, statement, plan));
                }
                served_.push_back(served);
            }
        }
        return rows;
    }

    std::vector<Served> served_;
    std::set<std::string> readWhole_;  // the shapes

private:
    void Count(Served& served, const CataloguedStatement& statement, const QueryPlan& plan) {
        ++served.statements;
        if (!plan.indexes.empty()) ++served.byIndex;
        if (plan.wholeTables.empty()) return;
        ++served.whole;
        readWhole_.insert(statement.shape);
        EXPECT_NE(ReasonToReadAll(statement.shape, GetParam().engineName), "")
            << served.method << " reads all of " << plan.wholeTables.front() << ": " << plan.text << "\n"
            << statement.shape;
    }
};

TEST_P(StatementDocumentOn, SaysWhatTheLibraryDoes) {
    const std::string written = TextOf(kDocument);
    PlanRows plans(written);
    plans.Replace(GetParam().engineName, RowsOfPlans());
    const std::string document = StatementDocument(TheCatalogue(), plans);
    if (std::getenv("KXJOB_WRITE_STATEMENTS") != nullptr) {
        std::ofstream(kDocument, std::ios::binary) << document;
    } else {
        EXPECT_TRUE(document == written) << "docs/statements.md is out of date: script/statements";
        const auto differing =
            std::mismatch(document.begin(), document.end(), written.begin(), written.end());
        if (differing.first != document.end()) {
            ADD_FAILURE() << "from here on: "
                          << document.substr(static_cast<std::size_t>(differing.first - document.begin()),
                                             600);
        }
    }
    EXPECT_EQ(readWhole_, ShapesThatReadAll(GetParam().engineName)) << "a reason that nothing needs any more";
    WriteProof("statements-" + GetParam().name, TableOf(GetParam().engineName, served_));
    int statements = 0;
    int byIndex = 0;
    for (const Served& one : served_) {
        statements += one.statements;
        byIndex += one.byIndex;
    }
    if (GetParam().serverName.empty()) Prove("statements in the catalogue", statements, 120);
    Prove("statements served by an index on " + GetParam().name, byIndex, 95);
}

INSTANTIATE_TEST_SUITE_P(Engines, StatementDocumentOn,
                         testing::Values(SqliteFile(), PostgreSqlServer(), MariaDbServer()), EngineName);

TEST(StatementCatalogue, ReachesEveryPlaceThatSendsAStatementAndNoOther) {
    const std::string sources = KXJOB_SOURCE_FOLDER "/src";
    const std::map<std::string, std::string> files = FilesOfMethods(sources);
    std::set<std::pair<std::string, std::int32_t>> reached;
    for (const auto& [method, line] : TheCatalogue().storeCalls) {
        if (method.empty()) continue;  // the worker host's
        ASSERT_TRUE(files.contains(method)) << method;
        reached.emplace(files.at(method), line);
    }
    std::set<std::pair<std::string, std::int32_t>> places;
    for (const StatementPlace& place : StatementPlaces(sources)) {
        places.emplace(place.file, place.line);
        EXPECT_TRUE(reached.contains({place.file, place.line}))
            << "no variant reaches " << place.file << ":" << place.line << ": " << place.text;
    }
    for (const auto& [file, line] : reached) {
        EXPECT_TRUE(places.contains({file, line})) << file << ":" << line << " is no known place";
    }
    Prove("places that send a statement, all reached", static_cast<int>(places.size()), 42);
}

TEST(StatementCatalogue, HasEveryMethod) {
    std::set<std::string> methods;
    for (const CataloguedFamily& family : TheCatalogue().families) {
        for (const CataloguedMethod& method : family.methods) methods.insert(method.name);
    }
    for (const MethodCall& method : EveryMethod()) EXPECT_TRUE(methods.contains(method.name)) << method.name;
}

}  // namespace
}  // namespace kxjob::testing_support
