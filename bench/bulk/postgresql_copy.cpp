#include <libpq-fe.h>

#include <stdexcept>

#include "bulk/bulk_road.h"

namespace kxjob::bench {
namespace {

struct Finish {
    void operator()(PGconn* connection) const { PQfinish(connection); }
};
struct Clear {
    void operator()(PGresult* result) const { PQclear(result); }
};
using Result = std::unique_ptr<PGresult, Clear>;

/// The value of one entry of an ODBC connection string.
std::string Entry(const std::string& connectionString, const std::string& key) {
    const std::size_t begin = connectionString.find(";" + key + "=");
    if (begin == std::string::npos) return {};
    const std::size_t value = begin + key.size() + 2;
    return connectionString.substr(value, connectionString.find(';', value) - value);
}

class Road : public BulkRoad {
public:
    explicit Road(const BenchStore& store)
        : copy_("COPY " + store.Qualifier() +
                "JobItem (jobguid, jobitemguid, identifier, sequence) FROM STDIN") {
        const std::string& odbc = store.Connection();
        connection_.reset(PQsetdbLogin(Entry(odbc, "Server").c_str(), Entry(odbc, "Port").c_str(), nullptr,
                                       nullptr, Entry(odbc, "Database").c_str(), Entry(odbc, "UID").c_str(),
                                       Entry(odbc, "PWD").c_str()));
        Require(PQstatus(connection_.get()) == CONNECTION_OK);
    }

    void Insert(const std::string& job, const std::vector<NewItem>& items) override {
        const Result begun(PQexec(connection_.get(), copy_.c_str()));
        Require(PQresultStatus(begun.get()) == PGRES_COPY_IN);
        constexpr std::size_t kPiece = 64 * 1024;
        std::string lines;
        for (std::size_t i = 0; i < items.size(); ++i) {
            lines.append(job).append("\t").append(items[i].guid).append("\t");
            lines.append(items[i].identifier).append("\t").append(std::to_string(i)).append("\n");
            if (lines.size() < kPiece && i + 1 < items.size()) continue;
            Require(PQputCopyData(connection_.get(), lines.data(), static_cast<int>(lines.size())) == 1);
            lines.clear();
        }
        Require(PQputCopyEnd(connection_.get(), nullptr) == 1);
        const Result ended(PQgetResult(connection_.get()));
        Require(PQresultStatus(ended.get()) == PGRES_COMMAND_OK);
        while (const Result rest{PQgetResult(connection_.get())}) {
        }
    }

private:
    void Require(bool done) const {
        if (!done) throw std::runtime_error(PQerrorMessage(connection_.get()));
    }

    std::unique_ptr<PGconn, Finish> connection_;
    std::string copy_;
};

}  // namespace

std::unique_ptr<BulkRoad> PostgreSqlCopy(const BenchStore& store) {
    return std::make_unique<Road>(store);
}

}  // namespace kxjob::bench
