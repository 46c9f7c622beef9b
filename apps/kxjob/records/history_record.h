#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "kxjob/configured_connection.h"
#include "value_json.h"

namespace kxjob::command {

/// One action that the administration history keeps.
struct HistoryRecord {
    std::string guid;
    std::string written;
    std::string action;  // e.g. "JOB_CREATE"
    std::string detail;  // XML
    std::string user;
};

/// The newest `limit` records, the newest first; of one job only when `job` is not empty. Nothing for a store
/// without a history.
std::optional<std::vector<HistoryRecord>> ReadHistory(const StoreConnection& connection,
                                                      const std::string& job, std::int32_t limit);

Json ToJson(const HistoryRecord& record);

}  // namespace kxjob::command
