#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace kxjob::testing_support {

/// How many calls were made to fail, and how often all was right then.
struct FaultTally {
    int failed = 0;
    int survived = 0;
};

/// The tallies of one engine: a row a method, a column a fault.
class FaultTable {
public:
    FaultTable(std::string engine, std::vector<std::string> faults, std::string notes)
        : engine_(std::move(engine)), faults_(std::move(faults)), notes_(std::move(notes)) {}

    void Add(const std::string& method, int calls) { rows_.push_back({method, calls, {}}); }
    /// Counts for the method that was added last.
    void Count(const std::string& fault, bool survived);
    FaultTally Total() const;
    std::string Markdown() const;

private:
    struct Row {
        std::string method;
        int calls;
        std::map<std::string, FaultTally> tallies;
    };

    FaultTally Total(const std::string& fault) const;

    std::string engine_;
    std::vector<std::string> faults_;
    std::string notes_;
    std::vector<Row> rows_;
};

}  // namespace kxjob::testing_support
