#pragma once

namespace kxjob {

/// Uniform random numbers.
class RandomSource {
public:
    virtual ~RandomSource() = default;
    /// Starts a new sequence from the system timer.
    virtual void SeedFromTimer() = 0;
    /// The next number in [0, 1).
    virtual float Next() = 0;
};

}  // namespace kxjob
