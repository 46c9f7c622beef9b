#pragma once

#include <cstdint>
#include <deque>
#include <optional>

namespace kxjob::command {

/// How fast the items of a job end, over the last minute in which it was looked at.
class ItemPace {
public:
    /// So many items had ended at a time in seconds, which never goes back.
    void See(double time, std::int64_t endedItems);

    /// 0 until two looks have told a difference.
    double ItemsPerSecond() const;
    /// How long so many more items take at this pace; nothing when none ends.
    std::optional<double> SecondsFor(std::int64_t items) const;

private:
    struct Seen {
        double time;
        std::int64_t endedItems;
    };
    std::deque<Seen> seen_;
};

}  // namespace kxjob::command
