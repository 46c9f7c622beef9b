#include <algorithm>
#include <array>

#include "bulk/bulk_road.h"
#include "driver/odbc_handles.h"

namespace kxjob::bench {
namespace {

constexpr std::size_t kLongestText = 64;

/// One column's values of a batch, side by side as the driver wants them.
struct TextColumn {
    explicit TextColumn(std::size_t rows) : texts(rows), lengths(rows) {}
    void Set(std::size_t row, const std::string& text) {
        std::copy(text.begin(), text.end(), texts[row].begin());
        lengths[row] = static_cast<SQLLEN>(text.size());
    }
    std::vector<std::array<char, kLongestText>> texts;
    std::vector<SQLLEN> lengths;
};

class Road : public BulkRoad {
public:
    Road(const BenchStore& store, std::size_t batch)
        : connection_(store.Connection()),
          insert_(connection_.NewStatement()),
          batch_(batch),
          jobs_(batch),
          guids_(batch),
          identifiers_(batch),
          sequences_(batch) {
        SQLSetConnectAttr(connection_.Get(), SQL_ATTR_AUTOCOMMIT, OdbcNumber(SQL_AUTOCOMMIT_OFF), 0);
        const std::string sql = "INSERT INTO " + store.Qualifier() +
                                "JobItem (jobguid, jobitemguid, identifier, sequence) VALUES (?, ?, ?, ?)";
        RequireOdbc(SQLPrepare(insert_.get(), OdbcBytes(sql), SQL_NTS), insert_.get());
        Bind(1, jobs_);
        Bind(2, guids_);
        Bind(3, identifiers_);
        SQLBindParameter(insert_.get(), 4, SQL_PARAM_INPUT, SQL_C_SLONG, SQL_INTEGER, 0, 0, sequences_.data(),
                         0, nullptr);
    }

    void Insert(const std::string& job, const std::vector<NewItem>& items) override {
        for (std::size_t first = 0; first < items.size(); first += batch_) {
            const std::size_t rows = std::min(batch_, items.size() - first);
            for (std::size_t row = 0; row < rows; ++row) {
                jobs_.Set(row, job);
                guids_.Set(row, items[first + row].guid);
                identifiers_.Set(row, items[first + row].identifier);
                sequences_[row] = static_cast<SQLINTEGER>(first + row);
            }
            SQLSetStmtAttr(insert_.get(), SQL_ATTR_PARAMSET_SIZE, OdbcNumber(rows), 0);
            RequireOdbc(SQLExecute(insert_.get()), insert_.get());
            SQLFreeStmt(insert_.get(), SQL_CLOSE);
            SQLEndTran(SQL_HANDLE_DBC, connection_.Get(), SQL_COMMIT);
        }
    }

private:
    void Bind(SQLUSMALLINT place, TextColumn& column) {
        SQLBindParameter(insert_.get(), place, SQL_PARAM_INPUT, SQL_C_CHAR, SQL_VARCHAR, kLongestText, 0,
                         column.texts.data(), kLongestText, column.lengths.data());
    }

    OdbcConnection connection_;
    OdbcHandle<SQL_HANDLE_STMT> insert_;
    std::size_t batch_;
    TextColumn jobs_;
    TextColumn guids_;
    TextColumn identifiers_;
    std::vector<SQLINTEGER> sequences_;
};

}  // namespace

std::unique_ptr<BulkRoad> PreparedOdbc(const BenchStore& store, std::size_t batch) {
    return std::make_unique<Road>(store, batch);
}

}  // namespace kxjob::bench
