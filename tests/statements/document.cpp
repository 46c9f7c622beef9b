#include "statements/document.h"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <string_view>

#include "statements/whole_reads.h"

namespace kxjob::testing_support {
namespace {

constexpr const char* kIntroduction =
    "# Statements\n\n"
    "Every statement that the library and the worker host send to a store, when they send it, and which "
    "index\n"
    "serves it. The running library made this page (`script/statements`), and the tests compare it with what "
    "it\n"
    "does: the texts are exact, blanks included. `:JobGUID` stands for a value, `:newGUID` and `:now` for "
    "what is\n"
    "drawn anew, `kx_` for the qualifier. Long texts are bound, not written into the statement. A method is "
    "left\n"
    "out of the chapters when it sends nothing.\n\n"
    "The plans are those of a store with 2,000 jobs, 24,000 items and 4,000 tasks, with statistics, on the\n"
    "engines of Debian 12; which states and keys were asked for are rare ones. `sqlite_autoindex_..._1` and\n"
    "`..._pkey` are the primary keys. Not listed are the engine's own: transactions around a batch, and how "
    "a\n"
    "session is set up and asks for the time. The tables `adminhistory`, `applicationstate`, `subsystem` "
    "and\n"
    "`systemflag` are those of the components that ship with the library.\n\n";

std::string Anchor(std::string title) {
    std::string anchor;
    for (const char c : title) {
        if (std::isalnum(static_cast<unsigned char>(c)) != 0) {
            anchor += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        } else if (c == ' ' || c == '-') {
            anchor += '-';
        }
    }
    return anchor;
}

std::string LinkTo(const std::string& title) {
    return "[" + title + "](#" + Anchor(title) + ")";
}

std::size_t CountOf(const CataloguedFamily& family) {
    std::size_t count = 0;
    for (const CataloguedMethod& method : family.methods) count += method.statements.size();
    return count;
}

bool IsShown(const CataloguedMethod& method) {
    return !method.statements.empty() || !method.runs.empty();
}

std::string Contents(const Catalogue& catalogue) {
    std::string text = "| chapter | statements | methods |\n|---|---|---|\n";
    for (const CataloguedFamily& family : catalogue.families) {
        std::string methods;
        for (const CataloguedMethod& method : family.methods) {
            const std::string name = IsShown(method) ? LinkTo(method.name) : method.name;
            methods += (methods.empty() ? "" : ", ") + name;
        }
        const std::size_t count = CountOf(family);
        text += "| " + (count == 0 ? family.title : LinkTo(family.title)) + " | " + std::to_string(count) +
                " | " + methods + " |\n";
    }
    return text + "\n";
}

std::string When(const CataloguedStatement& statement) {
    if (statement.conditions.empty()) return "Always.";
    constexpr std::string_view kUnless = "unless ";
    if (statement.conditions.front().starts_with(kUnless)) {
        return "Unless " + statement.conditions.front().substr(kUnless.size()) + ".";
    }
    std::string text = "When ";
    for (std::size_t i = 0; i < statement.conditions.size(); ++i) {
        text += (i == 0 ? "" : "; or when ") + statement.conditions[i];
    }
    return text + ".";
}

class Chapters {
public:
    explicit Chapters(const PlanRows& plans) : plans_(plans) {}

    std::string Of(const CataloguedFamily& family) {
        std::string text = "## " + family.title + "\n\n";
        for (const CataloguedMethod& method : family.methods) {
            if (IsShown(method)) text += Section(method);
        }
        return text;
    }

private:
    std::string Section(const CataloguedMethod& method) {
        std::string text = "### " + method.name + "\n\n";
        if (!method.runs.empty()) {
            std::string runs;
            for (const std::string& run : method.runs) runs += (runs.empty() ? "" : ", ") + LinkTo(run);
            text += "Runs " + runs + ".\n\n";
        }
        for (const CataloguedStatement& statement : method.statements) {
            text += "```sql\n" + statement.shape + "\n```\n\n" + When(statement) + "\n\n";
            text += "| store | served by | plan |\n|---|---|---|\n";
            for (std::size_t i = 0; i < PlanRows::Engines().size(); ++i)
                text += plans_.Row(i, number_) + "\n";
            text += "\n";
            ++number_;
        }
        return text;
    }

    const PlanRows& plans_;
    std::size_t number_ = 0;
};

std::string ServedBy(const std::string& engine, const CataloguedStatement& statement, const QueryPlan& plan) {
    if (!plan.wholeTables.empty()) {
        const std::string reason = ReasonToReadAll(statement.shape, engine);
        return "the whole table: " + (reason.empty() ? "why?" : reason);
    }
    if (plan.text == "Select tables optimized away") return "the first entry of an index";
    std::string indexes;
    for (const std::string& index : plan.indexes) {
        indexes += (indexes.empty() ? "`" : ", `") + index + "`";
    }
    return indexes.empty() ? "nothing is read" : indexes;
}

}  // namespace

const std::vector<std::string>& PlanRows::Engines() {
    static const std::vector<std::string> engines{"SQLite", "PostgreSQL", "MariaDB"};
    return engines;
}

PlanRows::PlanRows(const std::string& document) : rows_(Engines().size()) {
    std::istringstream lines(document);
    for (std::string line; std::getline(lines, line);) {
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            if (line.starts_with("| " + Engines()[i] + " |")) rows_[i].push_back(line);
        }
    }
}

void PlanRows::Replace(const std::string& engine, const std::vector<std::string>& rows) {
    const auto place = std::find(Engines().begin(), Engines().end(), engine) - Engines().begin();
    rows_.at(static_cast<std::size_t>(place)) = rows;
}

std::string PlanRows::Row(std::size_t engine, std::size_t statement) const {
    const std::vector<std::string>& rows = rows_.at(engine);
    return statement < rows.size() ? rows[statement] : "| " + Engines()[engine] + " | ? | ? |";
}

std::string PlanRow(const std::string& engine, const CataloguedStatement& statement, const QueryPlan& plan) {
    return "| " + engine + " | " + ServedBy(engine, statement, plan) + " | " +
           (plan.text.empty() ? "" : "`" + plan.text + "` ") + "|";
}

std::string StatementDocument(const Catalogue& catalogue, const PlanRows& plans) {
    std::string text = kIntroduction + Contents(catalogue);
    Chapters chapters(plans);
    for (const CataloguedFamily& family : catalogue.families) {
        if (CountOf(family) > 0) text += chapters.Of(family);
    }
    while (text.ends_with("\n\n")) text.pop_back();
    return text;
}

}  // namespace kxjob::testing_support
