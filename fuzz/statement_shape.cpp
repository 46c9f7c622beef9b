// No text that the guard lets through, or that the formatter makes a literal of, changes what a statement is.
// First line: the method, as one character. Second line: a qualifier, or nothing. Then texts, one a line: for
// the rows that no argument names, and for the text arguments in their order.
//
// With texts: SQLite makes the same program of every statement as it does with harmless texts, but for the
// texts themselves, which are exactly those given. With a qualifier: no statement reaches another table than
// it names.

#include <sqlite3.h>

#include <regex>

#include "kxjob/automation_error.h"
#include "kxjob/data_store_provider.h"
#include "kxjob/store.h"
#include "support/fuzz_input.h"
#include "support/fuzz_store.h"
#include "support/method_plan.h"
#include "support/qualified_tables.h"
#include "support/statement_watch.h"

namespace {

using kxjob::fuzz::Fail;
using kxjob::fuzz::FuzzStore;
using kxjob::fuzz::Instruction;
using kxjob::fuzz::MethodPlan;
using kxjob::fuzz::Require;
using kxjob::fuzz::StatementWatch;

/// A database of its own with the same tables, to look at statements without running them.
sqlite3* Drawing() {
    static sqlite3* database = [] {
        sqlite3* opened = nullptr;
        Require(sqlite3_open(":memory:", &opened) == SQLITE_OK, "a database in memory can be opened");
        const std::string script =
            kxjob::Store(FuzzStore::Instance().ConnectionString(), kxjob::dspSqlite, "kx_").CreationScript();
        Require(sqlite3_exec(opened, script.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK,
                "the script runs");
        return opened;
    }();
    return database;
}

/// The same with one word for all that the library makes itself in each call.
std::string WithoutMoments(const std::string& text) {
    static const std::regex moment(
        R"(\{[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\}|\d{4}-\d\d-\d\dT[0-9:.]{12}Z)");
    return std::regex_replace(text, moment, "moment");
}

/// The harmless texts in `text` replaced by those that they stand for.
std::string Meant(std::string text, const std::map<std::string, std::string>& originals) {
    for (std::size_t place = 0; place < text.size();) {
        bool isReplaced = false;
        for (const auto& [harmless, original] : originals) {
            if (text.compare(place, harmless.size(), harmless) != 0) continue;
            text.replace(place, harmless.size(), original);
            place += original.size();
            isReplaced = true;
            break;
        }
        if (!isReplaced) ++place;
    }
    return text;
}

void RequireSameShape(const std::string& statement, const std::string& harmless,
                      const std::map<std::string, std::string>& originals) {
    const std::vector<Instruction> shape = kxjob::fuzz::ShapeOf(Drawing(), statement);
    const std::vector<Instruction> wanted = kxjob::fuzz::ShapeOf(Drawing(), harmless);
    Require(!wanted.empty(), "the harmless statement is one: " + harmless);
    Require(shape.size() == wanted.size(), "the statement has the same length: " + statement);
    for (std::size_t i = 0; i < shape.size(); ++i) {
        Require(shape[i].code == wanted[i].code, "the statement is the same: " + statement);
        const bool isSame = shape[i].text == Meant(wanted[i].text, originals) ||
                            WithoutMoments(shape[i].text) == WithoutMoments(Meant(wanted[i].text, originals));
        Require(isSame, "the text is the one given: " + shape[i].text + " in " + statement);
    }
}

struct Course {
    std::optional<std::int32_t> error;
    std::vector<std::string> statements;
};

Course CourseOf(const MethodPlan& plan) {
    kxjob::fuzz::Plant(plan);
    const StatementWatch watch(FuzzStore::Instance().Database());
    const std::optional<std::int32_t> error = kxjob::fuzz::Carry(plan);
    return {error, watch.Statements()};
}

void CheckTexts(const MethodPlan& plan) {
    for (const auto& [name, text] : plan.texts) {
        // It stands for no application state, by itself.
        if (text.find("{00000000-0000-0000-0000-000000000000}") != std::string::npos) return;
    }
    const Course course = CourseOf(plan);
    if (!course.error) return;
    MethodPlan harmlessPlan = plan;
    const std::map<std::string, std::string> originals = kxjob::fuzz::MakeHarmless(harmlessPlan);
    const Course harmless = CourseOf(harmlessPlan);
    const bool isRefused = *course.error == kxjob::error_number::kGuardRefusal ||
                           *course.error == kxjob::error_number::kUnstorableText;
    if (!isRefused && !harmless.statements.empty()) {
        Require(course.error == harmless.error, "the call ends as with harmless texts");
        Require(course.statements.size() == harmless.statements.size(), "there are as many statements");
    }
    Require(course.statements.size() <= harmless.statements.size(), "there are no more statements");
    for (std::size_t i = 0; i < course.statements.size(); ++i) {
        const bool isOfTransaction = course.statements[i] == harmless.statements[i];
        if (!isOfTransaction) RequireSameShape(course.statements[i], harmless.statements[i], originals);
    }
}

void CheckQualifier(MethodPlan plan, const std::string& qualifier) {
    kxjob::fuzz::MakeHarmless(plan);
    kxjob::fuzz::Plant(plan);
    plan.qualifier = qualifier;
    const kxjob::fuzz::QualifiedTables tables(qualifier);
    std::set<std::string> reached;
    {
        const StatementWatch watch(FuzzStore::Instance().Database());
        static_cast<void>(kxjob::fuzz::Carry(plan));
        reached = watch.Tables();
    }
    for (const std::string& table : reached) {
        if (!tables.Named().contains(table)) Fail("the qualifier " + qualifier + " reaches " + table);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzStore::Instance();
    std::vector<std::string> lines = kxjob::fuzz::Lines(data, size);
    if (lines.size() < 2 || lines[0].empty()) return 0;
    const auto number = static_cast<unsigned char>(lines[0][0]);
    const std::string qualifier = lines[1];
    lines.erase(lines.begin(), lines.begin() + 2);
    const MethodPlan plan = kxjob::fuzz::PlanOf(number, lines);
    if (qualifier.empty()) {
        CheckTexts(plan);
    } else if (!qualifier.starts_with("kx_")) {
        CheckQualifier(plan, qualifier);
    }
    return 0;
}
