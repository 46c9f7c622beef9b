#include <algorithm>

#include "bulk/bulk_road.h"

namespace kxjob::bench {
namespace {

constexpr std::size_t kRowsInStatement = 1000;

class Road : public BulkRoad {
public:
    explicit Road(const BenchStore& store)
        : driver_(store.NewDriver()),
          insert_("INSERT INTO " + store.Qualifier() +
                  "JobItem (jobguid, jobitemguid, identifier, sequence)"
                  " VALUES ") {}

    void Insert(const std::string& job, const std::vector<NewItem>& items) override {
        driver_->Run(Statement{"BEGIN"});
        for (std::size_t first = 0; first < items.size(); first += kRowsInStatement) {
            Statement statement{insert_};
            for (std::size_t i = first; i < std::min(items.size(), first + kRowsInStatement); ++i) {
                statement.sql.append(i == first ? "('" : ", ('").append(job).append("', '");
                statement.sql.append(items[i].guid).append("', '").append(items[i].identifier).append("', ");
                statement.sql.append(std::to_string(i)).append(")");
            }
            driver_->Run(statement);
        }
        driver_->Run(Statement{"COMMIT"});
    }

private:
    std::unique_ptr<BareDriver> driver_;
    std::string insert_;
};

}  // namespace

std::unique_ptr<BulkRoad> MultiRowInsert(const BenchStore& store) {
    return std::make_unique<Road>(store);
}

}  // namespace kxjob::bench
