#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "kxjob/array.h"
#include "kxjob/configured_connection.h"
#include "kxjob/job_helper.h"
#include "kxjob/store.h"

namespace kxjob::command {

/// The states that the host sets and looks for.
inline constexpr const char* kQueued = "QUEUED";
inline constexpr const char* kRunning = "RUNNING";
inline constexpr const char* kComplete = "COMPLETE";
inline constexpr const char* kFailedState = "FAILED";

/// How an item that nobody has taken looks.
inline constexpr const char* kWaiting = "(jobitemstateid IS NULL OR jobitemstateid = '')";

/// The job tables of one store, as statements need them. One object a thread.
class JobStore {
public:
    explicit JobStore(StoreConnection connection);

    const StoreConnection& Connection() const { return connection_; }
    JobHelper& Jobs() { return jobs_; }

    std::string Literal(const std::string& text) { return store_.Literal(text); }
    /// "'a', 'b'", for an IN list.
    std::string Literals(const std::vector<std::string>& texts);
    std::string Table(const std::string& baseName) const { return store_.Table(baseName); }

    void Execute(const std::string& sql) { store_.Execute(sql); }
    void ExecuteTogether(const std::vector<std::string>& statements) { store_.ExecuteTogether(statements); }
    /// No row gives an array of no rows.
    Value Query(const std::string& sql);
    /// The first cell of the first row; Null when there is no row.
    Value Cell(const std::string& sql);
    /// The time by the store's clock; by this machine's where the store has none that is known.
    std::string Now();

private:
    StoreConnection connection_;
    Store store_;
    JobHelper jobs_;
};

/// The numbers of the rows of a query's result.
std::int32_t RowCount(const Value& rows);

}  // namespace kxjob::command
