#include "demo/job_progress.h"

#include <fmt/format.h>

#include <utility>

#include "kxjob/caller_texts.h"

namespace kxjob::command {
namespace {

constexpr std::size_t kItemsBetweenWrites = 100;

}  // namespace

JobProgress::JobProgress(StoreConnection connection, std::string jobGuid)
    : connection_(std::move(connection)), jobGuid_(std::move(jobGuid)), startTime_(NowISODateTime()) {}

void JobProgress::ItemEnded(bool succeeded, const std::string& endTime) {
    const std::lock_guard lock(mutex_);
    const auto now = std::chrono::steady_clock::now();
    const double increment = std::chrono::duration<double>(now - lastEnd_).count();
    sumOfSquaredIncrements_ += increment * increment;
    lastEnd_ = now;
    lastCompletion_ = endTime;
    ++(succeeded ? counts_.succeeded : counts_.failed);
    if (Done(counts_) % kItemsBetweenWrites == 0) {
        Store(connection_.connectionString, connection_.provider, connection_.nameQualifier)
            .Execute(UpdateStatement());
    }
}

void JobProgress::Write() {
    const std::lock_guard lock(mutex_);
    Store(connection_.connectionString, connection_.provider, connection_.nameQualifier)
        .Execute(UpdateStatement());
}

ItemCounts JobProgress::Now() const {
    const std::lock_guard lock(mutex_);
    return counts_;
}

std::string JobProgress::UpdateStatement() const {
    Store store(connection_.connectionString, connection_.provider, connection_.nameQualifier);
    return fmt::format(
        "UPDATE {} SET nextjobitem = {}, succeededitemcount = {}, faileditemcount = {}, startdt = {},"
        " lastcompletiondt = {}, sumoftimeincsq = {} WHERE jobguid = {}",
        store.Table("job"), Done(counts_), counts_.succeeded, counts_.failed, store.Literal(startTime_),
        lastCompletion_.empty() ? "NULL" : store.Literal(lastCompletion_),
        DoubleText(sumOfSquaredIncrements_), store.Literal(jobGuid_));
}

}  // namespace kxjob::command
