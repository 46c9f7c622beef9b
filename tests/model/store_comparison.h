#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "kxjob/store.h"
#include "model/model_tables.h"
#include "model/steps.h"

namespace kxjob::model {

/// What a step did in the library.
struct Outcome {
    std::optional<std::int32_t> error;
    Value result;
    /// The time before and after it.
    std::string began;
    std::string ended;
};

/// What the model says that it did.
struct Foretold {
    std::vector<std::int32_t> errors = {};  // one of these; none: no error
    Result result = {};
};

/// Compares the store with the model, and takes over what the library chose itself.
class StoreComparison {
public:
    explicit StoreComparison(Store& store) : store_(&store) {}

    /// How they differ; empty when they do not.
    std::string DifferenceAfter(const Outcome& outcome, const Foretold& foretold, Tables& tables);

private:
    bool Takes(const Cell& cell, const Value& stored, const Outcome& outcome);
    bool TakesGuid(int number, const Value& stored);
    bool TakesRow(Row& row, const std::vector<std::string>& columns, const std::vector<Value>& stored,
                  const Outcome& outcome);
    std::string TableDifference(Table& table, const Outcome& outcome);
    std::string ResultDifference(const Outcome& outcome, const Foretold& foretold) const;

    Store* store_;
    std::set<std::string> seen_;
    std::map<int, std::string> guids_;  // of this step
};

}  // namespace kxjob::model
