#pragma once

#include <memory>
#include <string>
#include <vector>

#include "stores/bench_store.h"

namespace kxjob::bench {

/// What stands in one row of a new item; its place in the list is its sequence number.
struct NewItem {
    std::string guid;
    std::string identifier;
};

/// A way to add many items to a job without the library.
class BulkRoad {
public:
    virtual ~BulkRoad() = default;
    virtual void Insert(const std::string& job, const std::vector<NewItem>& items) = 0;
};

/// A prepared INSERT whose values are bound, one transaction for every `batch` rows; ODBC gets the values of
/// a batch at once.
std::unique_ptr<BulkRoad> PreparedSqlite(const BenchStore& store, std::size_t batch);
std::unique_ptr<BulkRoad> PreparedOdbc(const BenchStore& store, std::size_t batch);

/// COPY ... FROM STDIN, by libpq.
std::unique_ptr<BulkRoad> PostgreSqlCopy(const BenchStore& store);
/// INSERT ... VALUES of a thousand rows a statement, in one transaction.
std::unique_ptr<BulkRoad> MultiRowInsert(const BenchStore& store);

}  // namespace kxjob::bench
