#include "bulk/bulk_road.h"
#include "driver/sqlite_handles.h"

namespace kxjob::bench {
namespace {

class Road : public BulkRoad {
public:
    Road(const BenchStore& store, std::size_t batch)
        : database_(OpenSqlite(store.File())),
          insert_(Compiled(database_.get(), "INSERT INTO " + store.Qualifier() +
                                                "JobItem (jobguid, jobitemguid, identifier, sequence)"
                                                " VALUES (?, ?, ?, ?)")),
          batch_(batch) {}

    void Insert(const std::string& job, const std::vector<NewItem>& items) override {
        Bind(1, job);
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (i % batch_ == 0) Run("BEGIN IMMEDIATE");
            Bind(2, items[i].guid);
            Bind(3, items[i].identifier);
            sqlite3_bind_int64(insert_.get(), 4, static_cast<sqlite3_int64>(i));
            RequireSqlite(database_.get(), sqlite3_step(insert_.get()) == SQLITE_DONE);
            sqlite3_reset(insert_.get());
            if (i % batch_ == batch_ - 1 || i + 1 == items.size()) Run("COMMIT");
        }
    }

private:
    void Bind(int place, const std::string& text) {
        sqlite3_bind_text64(insert_.get(), place, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8);
    }
    void Run(const char* sql) {
        RequireSqlite(database_.get(),
                      sqlite3_exec(database_.get(), sql, nullptr, nullptr, nullptr) == SQLITE_OK);
    }

    SqliteDatabase database_;
    SqliteStatement insert_;
    std::size_t batch_;
};

}  // namespace

std::unique_ptr<BulkRoad> PreparedSqlite(const BenchStore& store, std::size_t batch) {
    return std::make_unique<Road>(store, batch);
}

}  // namespace kxjob::bench
