#include "demo/job_progress.h"

#include <fmt/format.h>

#include <utility>

#include "kxjob/caller_texts.h"

namespace kxjob::command {
namespace {

constexpr std::size_t kItemsBetweenWrites = 100;

}  // namespace

JobProgress::JobProgress(StoreConnection connection, std::string jobGuid)
    : store_(std::move(connection.connectionString), connection.provider,
             std::move(connection.nameQualifier)),
      jobGuid_(std::move(jobGuid)),
      startTime_(NowISODateTime()) {}

void JobProgress::ItemEnded(bool succeeded, const std::string& endTime) {
    const std::lock_guard lock(mutex_);
    const auto now = std::chrono::steady_clock::now();
    const double increment = std::chrono::duration<double>(now - lastEnd_).count();
    sumOfSquaredIncrements_ += increment * increment;
    lastEnd_ = now;
    lastCompletion_ = endTime;
    ++(succeeded ? counts_.succeeded : counts_.failed);
    if (Done(counts_) % kItemsBetweenWrites == 0) store_.Execute(UpdateStatement());
}

void JobProgress::Write() {
    const std::lock_guard lock(mutex_);
    store_.Execute(UpdateStatement());
}

ItemCounts JobProgress::Now() const {
    const std::lock_guard lock(mutex_);
    return counts_;
}

std::string JobProgress::UpdateStatement() {
    return fmt::format(
        "UPDATE {} SET nextjobitem = {}, succeededitemcount = {}, faileditemcount = {}, startdt = {},"
        " lastcompletiondt = {}, sumoftimeincsq = {} WHERE jobguid = {}",
        store_.Table("job"), Done(counts_), counts_.succeeded, counts_.failed, store_.Literal(startTime_),
        lastCompletion_.empty() ? "NULL" : store_.Literal(lastCompletion_),
        DoubleText(sumOfSquaredIncrements_), store_.Literal(jobGuid_));
}

}  // namespace kxjob::command
