#pragma once

#include <string>
#include <vector>

#include "defaults/store/session.h"
#include "kxjob/data_store_provider.h"

namespace kxjob::testing_support {

/// How an engine says that it will run a statement, without what differs from store to store: costs, counts
/// of rows, conditions.
struct QueryPlan {
    std::string text;
    /// In the order in which they are used, each once.
    std::vector<std::string> indexes;
    /// Tables whose rows are all read.
    std::vector<std::string> wholeTables;
};

QueryPlan PlanOf(Session& session, DataStoreProvider provider, const std::string& sql);

}  // namespace kxjob::testing_support
