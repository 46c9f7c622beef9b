#pragma once

#include <string>
#include <vector>

#include "kxjob/job_helper.h"
#include "recording/statement_tap.h"
#include "stores/bench_store.h"
#include "support/every_method.h"

namespace kxjob::bench {

/// A call of one method, and the statements that it sends, each on a container of its own: neither side finds
/// its pages changed by the other. Before each run, the matching Reset puts back what the last one has used
/// up.
class CallPair {
public:
    CallPair(const Engine& engine, const testing_support::MethodCall& method);

    std::size_t StatementCount() const { return recorded_.size(); }
    void ResetDriver();
    void RunDriver();
    void ResetLibrary();
    void RunLibrary() { Call(helper_, libraryStore_); }

private:
    void Call(JobHelper& helper, const BenchStore& store);

    const testing_support::MethodCall& method_;
    BenchStore driverStore_;
    BenchStore libraryStore_;
    std::vector<std::string> reset_;
    std::vector<Statement> recorded_;
    std::vector<Statement> replayed_;
    JobHelper helper_;
};

}  // namespace kxjob::bench
