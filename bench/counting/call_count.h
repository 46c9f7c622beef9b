#pragma once

#include <string>

namespace kxjob::bench {

/// Runs each method and its statements on SQLite, some times, and writes how many allocations a run made, one
/// line each, "METHOD\tSIDE\tRUNS\tALLOCATIONS". Under `valgrind --tool=callgrind --collect-atstart=no` the
/// instructions of the same runs are dumped under the name "METHOD SIDE". Unlike times, neither depends on
/// the machine.
void CountCalls(const std::string& file);

}  // namespace kxjob::bench
