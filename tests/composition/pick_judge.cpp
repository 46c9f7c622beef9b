#include "composition/pick_judge.h"

#include <cmath>
#include <stdexcept>

namespace kxjob::testing_support {
namespace {

/// The chance of a chi-square of at least `value`; exact for an even number of degrees of freedom.
double ChanceOf(double value, std::size_t degrees) {
    double term = std::exp(-value / 2);
    double sum = 0;
    for (std::size_t i = 0; i < degrees / 2; ++i) {
        sum += term;
        term *= value / 2 / static_cast<double>(i + 1);
    }
    return sum;
}

double ChiSquareOf(const std::vector<std::size_t>& counts, std::size_t all) {
    const double expected = static_cast<double>(all) / static_cast<double>(counts.size());
    double sum = 0;
    for (const std::size_t count : counts) {
        const double difference = static_cast<double>(count) - expected;
        sum += difference * difference / expected;
    }
    return sum;
}

}  // namespace

PickVerdict JudgePicks(const std::vector<std::size_t>& picks, std::size_t candidates) {
    const std::size_t pairs = candidates * candidates;
    if (candidates % 2 == 0 || picks.size() / 2 < pairs * 5) {
        throw std::invalid_argument("an even number of candidates, or too few picks to judge");
    }
    PickVerdict verdict;
    verdict.counts.assign(candidates, 0);
    for (const std::size_t pick : picks) ++verdict.counts.at(pick);
    verdict.chiSquare = ChiSquareOf(verdict.counts, picks.size());
    verdict.chance = ChanceOf(verdict.chiSquare, candidates - 1);

    std::vector<std::size_t> pairCounts(pairs, 0);
    for (std::size_t i = 0; i + 1 < picks.size(); i += 2) ++pairCounts[picks[i] * candidates + picks[i + 1]];
    verdict.chiSquareOfPairs = ChiSquareOf(pairCounts, picks.size() / 2);
    verdict.chanceOfPairs = ChanceOf(verdict.chiSquareOfPairs, pairs - 1);
    return verdict;
}

}  // namespace kxjob::testing_support
