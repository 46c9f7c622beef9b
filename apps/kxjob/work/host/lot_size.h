#pragma once

#include <algorithm>
#include <cstddef>

namespace kxjob::command {

/// How many items to claim at once: few when they take long, so that others get some and little is given
/// back; many when they are quick, so that the claims cost little.
class LotSize {
public:
    explicit LotSize(std::size_t most) : most_(most) {}

    std::size_t Now() const { return now_; }
    /// The last lot, with its claim, has taken so long.
    void Took(double seconds) {
        if (seconds < kQuick) now_ = std::min(now_ * 2, most_);
        if (seconds > kSlow) now_ = std::max<std::size_t>(now_ / 2, 1);
    }

private:
    static constexpr double kQuick = 0.25;
    static constexpr double kSlow = 1;

    std::size_t most_;
    std::size_t now_ = 1;
};

}  // namespace kxjob::command
