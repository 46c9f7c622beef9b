#pragma once

#include <random>

#include "collaborators/random_source.h"

namespace kxjob {

/// Random numbers from a sequence that starts at the clock's reading, mixed with the process and the thread,
/// so that workers that ask at the same moment do not pick alike.
class ClockRandomSource : public RandomSource {
public:
    ClockRandomSource() { ClockRandomSource::SeedFromTimer(); }
    void SeedFromTimer() override;
    float Next() override;

private:
    std::mt19937 engine_;
};

}  // namespace kxjob
