#include "faults/fault_table.h"

namespace kxjob::testing_support {
namespace {

std::string Cell(const FaultTally& tally) {
    return " " + std::to_string(tally.failed) + " / " + std::to_string(tally.survived) + " |";
}

}  // namespace

void FaultTable::Count(const std::string& fault, bool survived) {
    FaultTally& tally = rows_.back().tallies[fault];
    ++tally.failed;
    if (survived) ++tally.survived;
}

FaultTally FaultTable::Total(const std::string& fault) const {
    FaultTally total;
    for (const Row& row : rows_) {
        const auto found = row.tallies.find(fault);
        if (found == row.tallies.end()) continue;
        total.failed += found->second.failed;
        total.survived += found->second.survived;
    }
    return total;
}

FaultTally FaultTable::Total() const {
    FaultTally total;
    for (const std::string& fault : faults_) {
        const FaultTally ofFault = Total(fault);
        total.failed += ofFault.failed;
        total.survived += ofFault.survived;
    }
    return total;
}

std::string FaultTable::Markdown() const {
    std::string text = "## Faults on " + engine_ + "\n\n";
    text +=
        "Calls that were made to fail, one after the other / of these, how often all was right: the error\n";
    text +=
        "unchanged and told once by every method on its way, the rows as published, every object released,\n";
    text += "the next call served.\n\n| method | calls |";
    for (const std::string& fault : faults_) text += " " + fault + " |";
    text += "\n|---|---|";
    for (std::size_t i = 0; i < faults_.size(); ++i) text += "---|";
    for (const Row& row : rows_) {
        text += "\n| " + row.method + " | " + std::to_string(row.calls) + " |";
        for (const std::string& fault : faults_) {
            const auto found = row.tallies.find(fault);
            text += found == row.tallies.end() ? " |" : Cell(found->second);
        }
    }
    text += "\n| **all** | |";
    for (const std::string& fault : faults_) text += Cell(Total(fault));
    return text + "\n\n" + notes_;
}

}  // namespace kxjob::testing_support
