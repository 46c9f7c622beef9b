#include "model/model_report.h"

#include <numeric>
#include <sstream>

#include "proof/proof_output.h"

namespace kxjob::model {

std::size_t AllCompared(const StepCounts& counts) {
    return std::accumulate(counts.begin(), counts.end(), std::size_t{0},
                           [](std::size_t sum, const auto& count) { return sum + count.second.compared; });
}

void ReportSteps(const std::string& engine, const StepCounts& counts, std::size_t least) {
    const std::size_t sum = AllCompared(counts);
    std::ostringstream table;
    table << "## Random steps against the model, " << engine << "\n\n"
          << "After each step the tables and the result were as the model says. Names that begin small are "
             "what\n"
          << "workers and administrators do between the methods.\n\n"
          << "| step | compared | of them errors |\n|---|---:|---:|\n";
    for (const auto& [name, count] : counts) {
        table << "| " << name << " | " << count.compared << " | " << count.raised << " |\n";
    }
    table << "| all | " << sum << " | |\n";
    testing_support::WriteProof("model-" + engine, table.str());
    testing_support::Prove("model steps compared on " + engine, static_cast<int>(sum),
                           static_cast<int>(least));
}

}  // namespace kxjob::model
