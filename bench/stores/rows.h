#pragma once

#include <string>
#include <vector>

#include "stores/bench_store.h"

namespace kxjob::bench {

/// Adds rows by the bare driver, a thousand a statement, in one transaction. A job's items and tasks are its
/// own; an empty state is NULL.
void AddItems(BenchStore& store, const std::string& jobGuid, int count, const std::string& state);

/// Adds jobs of the type in one state, each with a RUNNING task where `runningTask` says so; gives their
/// GUIDs.
std::vector<std::string> AddJobs(BenchStore& store, int count, const std::string& type,
                                 const std::string& state, bool runningTask = false);

/// Adds a job type whose items this component does.
void AddType(BenchStore& store, const std::string& type, const std::string& component);

}  // namespace kxjob::bench
