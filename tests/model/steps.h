#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "kxjob/job_helper.h"
#include "kxjob/store.h"
#include "model/draw.h"
#include "model/model_tables.h"

namespace kxjob::model {

/// One of these values: a method that chooses at random may give any.
using OneOf = std::vector<Value>;

/// These rows in any order, or in the order of one column; Empty when there is none.
struct ExpectedRows {
    std::vector<std::vector<Value>> rows;
    std::optional<std::size_t> ascending = {};
};

/// What a method gives; nothing, when it gives none.
using Result = std::variant<std::monostate, NewGuid, OneOf, ExpectedRows>;

/// One call: the real one, and what the model says of it.
struct Step {
    /// The method, under its published name; what others do to the store has a name that begins small.
    std::string name;
    std::function<Value(JobHelper& jobs, Store& store)> call;
    /// Changes the model; may leave by Raised.
    std::function<Result(Tables& tables)> effect;
};

/// How a step of one kind is made, and how often among the others.
struct StepKind {
    const char* name;
    std::size_t weight;
    std::function<Step(Draw& draw, const Tables& tables)> make;
};

/// Raises No row when there is none.
ExpectedRows SomeRows(ExpectedRows found);

std::vector<StepKind> VocabularySteps();
std::vector<StepKind> TaskSteps();
std::vector<StepKind> LifecycleSteps();
std::vector<StepKind> RemovalSteps();
std::vector<StepKind> QuerySteps();
std::vector<StepKind> StatisticsSteps();
std::vector<StepKind> StatusSteps();
std::vector<StepKind> SchedulingSteps();
/// What workers and administrators do by statements of their own.
std::vector<StepKind> OutsideSteps();

}  // namespace kxjob::model
