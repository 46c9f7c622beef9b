#pragma once

#include <string>
#include <vector>

#include "statements/catalogue.h"
#include "statements/query_plan.h"

namespace kxjob::testing_support {

/// The rows of the plans' tables in a document, by engine: what one engine says can be made anew while the
/// others' stay.
class PlanRows {
public:
    /// Those that a document has.
    explicit PlanRows(const std::string& document);

    /// Replaces those of an engine, one plan a statement.
    void Replace(const std::string& engine, const std::vector<std::string>& rows);
    /// The row for a statement, counted from 0; a gap where there is none.
    std::string Row(std::size_t engine, std::size_t statement) const;

    static const std::vector<std::string>& Engines();

private:
    std::vector<std::vector<std::string>> rows_;
};

/// The row of a plan: the engine, what serves the statement, and the plan.
std::string PlanRow(const std::string& engine, const CataloguedStatement& statement, const QueryPlan& plan);

/// The whole text of docs/statements.md.
std::string StatementDocument(const Catalogue& catalogue, const PlanRows& plans);

}  // namespace kxjob::testing_support
