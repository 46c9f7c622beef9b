#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "insight/watch/item_pace.h"
#include "insight/watch/job_look.h"

namespace kxjob::command {

/// A job as it has just been looked at.
struct WatchedJob {
    JobLook look;
    ItemPace pace;
    bool isLast = false;     // it will not be looked at again
    bool isRemoved = false;  // it is not there any more; `look` is what was seen last
};

/// Shows what each round of looking has found.
class WatchView {
public:
    virtual ~WatchView() = default;
    virtual void Show(const std::vector<WatchedJob>& jobs) = 0;
};

/// Bars that are drawn over again and again, for a person at a terminal.
std::unique_ptr<WatchView> MakeBarView(std::ostream& out);
/// A line a job, every so many rounds and at its end.
std::unique_ptr<WatchView> MakePlainView(std::ostream& out, int rounds);
/// A JSON object a line, for every job in every round.
std::unique_ptr<WatchView> MakeJsonView(std::ostream& out);

}  // namespace kxjob::command
