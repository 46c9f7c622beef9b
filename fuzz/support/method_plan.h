#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "method_table.h"

namespace kxjob::fuzz {

/// One call of a method, with the rows that its keys belong to.
struct MethodPlan {
    const command::Method* method = nullptr;
    std::string qualifier = "kx_";
    /// By the argument's name; under "" one for the rows that no argument names.
    std::map<std::string, std::string> texts = {};
};

/// The method of a number, its text arguments the lines in their order; what is missing is empty.
MethodPlan PlanOf(std::size_t number, const std::vector<std::string>& texts);

/// The same call with harmless texts: equal ones stay equal, empty ones empty. Gives, by harmless text, the
/// one that it stands for.
std::map<std::string, std::string> MakeHarmless(MethodPlan& plan);

/// Empties the store and puts in the rows that the plan's keys name.
void Plant(const MethodPlan& plan);

/// Calls the method on the store. The number of the error that it ended with; nothing when it cannot be
/// called.
std::optional<std::int32_t> Carry(const MethodPlan& plan);

}  // namespace kxjob::fuzz
