#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "work/protocol/task_claims.h"

namespace kxjob::command {

/// An item that a task holds.
struct ClaimedItem {
    std::string guid;
    std::int64_t sequence = 0;
    std::string identifier;
    std::string data;
    std::string note;
};

/// The waiting items of one job, claimed in lots for one task. Each statement is conditional, and what it did
/// is read back: an item is claimed by exactly one task, however many try.
class ItemLots {
public:
    ItemLots(JobStore& store, TaskName name) : store_(store), name_(std::move(name)) {}

    /// Up to `most` items that are the task's from now on, in the order of their sequence. None: nothing is
    /// left to claim, or the job is not RUNNING, or the task is not.
    std::vector<ClaimedItem> Claim(std::size_t most);

    /// All that the task holds: for a claim whose end was not seen.
    std::vector<ClaimedItem> Held();

    /// Where the items are that the task may hold, if those of earlier lots are finished; not known after a
    /// claim whose end was not seen: it may still come.
    std::optional<SequenceRange> Whereabouts() const;

private:
    struct Waiting {
        std::string guid;
        std::int64_t sequence;
    };

    /// The waiting items of a window of sequence numbers that begins at the job's hint, or where the first
    /// one is found. Empty when none is waiting.
    std::vector<Waiting> FirstWaiting(std::size_t most);
    std::vector<Waiting> WaitingFrom(std::int64_t first, std::size_t most);
    void Take(const std::vector<Waiting>& waiting, std::size_t most);
    std::vector<ClaimedItem> HeldWithin(const std::string& range);

    JobStore& store_;
    TaskName name_;
    std::int64_t window_ = 1;
    SequenceRange lastLot_;
    bool isLastLotAll_ = true;
};

/// The lowest sequence number of a job's waiting items, or of those from `from` on; Null when there is none.
Value LowestWaiting(JobStore& store, const std::string& job);
Value LowestWaitingFrom(JobStore& store, const std::string& job, std::int64_t from);

/// Whether any item of the job waits or is in work.
bool HasUnfinishedItems(JobStore& store, const std::string& job);

}  // namespace kxjob::command
