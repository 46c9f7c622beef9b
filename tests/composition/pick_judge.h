#pragma once

#include <cstddef>
#include <vector>

namespace kxjob::testing_support {

/// How a sequence of picks among equal candidates looks to one who expects each of them to be as likely as
/// the others, whatever was picked before.
struct PickVerdict {
    /// A uniform source is refused once in 500 million sequences: either of two questions at 1E-9.
    static constexpr double kFalseAlarm = 1E-9;

    std::vector<std::size_t> counts;
    double chiSquare = 0;         // of the counts
    double chance = 0;            // that a uniform source gives a chi-square as large
    double chiSquareOfPairs = 0;  // of picks 1 and 2, 3 and 4, and so on: does one tell about the next?
    double chanceOfPairs = 0;

    bool IsRefused() const { return chance < kFalseAlarm || chanceOfPairs < kFalseAlarm; }
};

/// `picks`: candidates by number, from 0. An odd number of candidates, for which the distribution of both
/// chi-squares has a closed form, and at least ten picks for each pair of them.
PickVerdict JudgePicks(const std::vector<std::size_t>& picks, std::size_t candidates);

}  // namespace kxjob::testing_support
