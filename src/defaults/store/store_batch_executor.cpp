#include "defaults/store/store_batch_executor.h"

#include <utility>

#include "automation/runtime_error.h"
#include "defaults/store/data_access_error.h"
#include "kxjob/automation_error.h"

namespace kxjob {

void StoreBatchExecutor::Open(const std::string& connectionString, DataStoreProvider /*provider*/,
                              std::int32_t batchSize) {
    if (batchSize < 1) RaiseRuntimeError(error_number::kInvalidCall);
    connectionString_ = connectionString;
    batchSize_ = static_cast<std::size_t>(batchSize);
    pending_.clear();
    sent_ = 0;
}

void StoreBatchExecutor::Add(const std::string& sql) {
    RequireOpen();
    pending_.push_back(sql);
    if (pending_.size() >= batchSize_) Flush();
}

void StoreBatchExecutor::Flush() {
    RequireOpen();
    if (pending_.empty()) return;
    const std::vector<std::string> group = std::exchange(pending_, {});
    const std::size_t before = std::exchange(sent_, sent_ + group.size());
    try {
        sessions_->Use(connectionString_, [&](Session& session) { session.RunBatch(group); });
    } catch (const AutomationError& error) {
        if (error.Number() != error_number::kStatementFailed) throw;  // the group was not reached
        const std::string place =
            "group " + std::to_string(before + 1) + " to " + std::to_string(before + group.size());
        throw AutomationError(error.Number(), error.Source(), WithPlace(error.Description(), place));
    }
}

void StoreBatchExecutor::RequireOpen() const {
    if (batchSize_ == 0) RaiseRuntimeError(error_number::kInvalidCall, "the batch has not been opened");
}

}  // namespace kxjob
