#include "insight/watch/watch_list.h"

#include <algorithm>

namespace kxjob::command {

void WatchList::LookAgain(WatchedJob& job) const {
    std::optional<JobLook> look = LookAt(store_, job.look.guid);
    job.isRemoved = !look.has_value();
    if (look) job.look = *std::move(look);
    // Without a job of its own the list is of those that workers are given.
    job.isLast = job.isRemoved || HasEnded(job.look) || job_.empty();
}

const std::vector<WatchedJob>& WatchList::Look(double time) {
    std::erase_if(jobs_, [](const WatchedJob& job) { return job.isLast; });
    const std::vector<JobLook> open = job_.empty() ? LookAtOpenJobs(store_) : std::vector<JobLook>();
    for (WatchedJob& job : jobs_) {
        const auto found = std::ranges::find(open, job.look.guid, &JobLook::guid);
        if (found == open.end()) {
            LookAgain(job);
        } else {
            job.look = *found;
        }
    }
    for (const JobLook& look : open) {
        const bool isKnown =
            std::ranges::any_of(jobs_, [&](const WatchedJob& job) { return job.look.guid == look.guid; });
        if (!isKnown) jobs_.push_back({.look = look, .pace = {}});
    }
    if (!job_.empty() && jobs_.empty()) {
        WatchedJob& job = jobs_.emplace_back();
        job.look.guid = job_;
        LookAgain(job);
    }
    for (WatchedJob& job : jobs_) job.pace.See(time, EndedItems(job.look));
    return jobs_;
}

bool WatchList::IsDone() const {
    return std::ranges::all_of(jobs_, &WatchedJob::isLast);
}

}  // namespace kxjob::command
