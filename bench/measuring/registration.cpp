#include "measuring/registration.h"

#include <utility>

namespace kxjob::bench {

void Register(const std::string& name, int iterations, std::function<void(benchmark::State&)> measure) {
    const auto guarded = [measure = std::move(measure)](benchmark::State& state) {
        try {
            measure(state);
        } catch (const std::exception& error) {
            state.SkipWithError(error.what());
        }
    };
    benchmark::RegisterBenchmark(name.c_str(), guarded)->Iterations(iterations)->UseManualTime();
}

}  // namespace kxjob::bench
