#include "insight/watch/item_pace.h"

namespace kxjob::command {
namespace {

constexpr double kRemembered = 60;  // seconds

}  // namespace

void ItemPace::See(double time, std::int64_t endedItems) {
    // A job that is put back to its start begins anew.
    if (!seen_.empty() && endedItems < seen_.back().endedItems) seen_.clear();
    seen_.push_back({time, endedItems});
    while (seen_.size() > 2 && seen_[1].time <= time - kRemembered) seen_.pop_front();
}

double ItemPace::ItemsPerSecond() const {
    if (seen_.empty() || seen_.back().time <= seen_.front().time) return 0;
    return static_cast<double>(seen_.back().endedItems - seen_.front().endedItems) /
           (seen_.back().time - seen_.front().time);
}

std::optional<double> ItemPace::SecondsFor(std::int64_t items) const {
    const double pace = ItemsPerSecond();
    if (pace <= 0) return std::nullopt;
    return static_cast<double>(items) / pace;
}

}  // namespace kxjob::command
