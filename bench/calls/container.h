#pragma once

#include <string>
#include <vector>

namespace kxjob::bench {

/// Statements, with %q% for the qualifier, that fill an empty store with what the calls of
/// tests/support/every_method.h work on: a RUNNING job with ten items and a task, among twenty others.
std::vector<std::string> FillContainer();

/// Statements that put back what one call of a method uses up, so that the next finds the same again.
std::vector<std::string> ResetAfter(const std::string& method);

/// The component of its job types, which does nothing.
inline constexpr const char* kContainerComponent = "Bench_83.Worker";

/// Makes it known to this process.
void RegisterContainerComponent();

}  // namespace kxjob::bench
