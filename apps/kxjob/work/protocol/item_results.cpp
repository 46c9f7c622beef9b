#include "work/protocol/item_results.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <tuple>

namespace kxjob::command {
namespace {

/// Items that one statement can write: they differ in nothing.
using Outcome = std::tuple<bool, std::string, std::string, std::string>;  // succeeded, start, end, note

std::map<Outcome, std::vector<std::string>> ByOutcome(const std::vector<ItemResult>& results) {
    std::map<Outcome, std::vector<std::string>> items;
    for (const ItemResult& result : results) {
        items[{result.succeeded, result.start, result.end, result.note}].push_back(result.item);
    }
    return items;
}

std::vector<std::string> ItemsOf(const std::vector<ItemResult>& results, bool succeeded) {
    std::vector<std::string> items;
    for (const ItemResult& result : results) {
        if (result.succeeded == succeeded) items.push_back(result.item);
    }
    return items;
}

/// The statements of one lot.
class Finishing {
public:
    Finishing(JobStore& store, const TaskName& name, const std::vector<ItemResult>& results)
        : store_(store), job_(store.Literal(name.job)), task_(store.Literal(name.task)) {
        const auto [first, last] = std::minmax_element(
            results.begin(), results.end(),
            [](const ItemResult& one, const ItemResult& other) { return one.sequence < other.sequence; });
        place_ =
            fmt::format("jobguid = {} AND sequence BETWEEN {} AND {}", job_, first->sequence, last->sequence);
    }

    std::string LockTask(const std::string& lastItem) const {
        return fmt::format(
            "UPDATE {} SET lastjobitem = {} WHERE jobtaskguid = {} AND jobtaskstateid = 'RUNNING'",
            store_.Table("jobtask"), store_.Literal(lastItem), task_);
    }

    /// Before the items change: what they count is what is still held.
    std::string Count(const std::vector<ItemResult>& results, double sumOfSquaredIncrements) const {
        std::string sql = fmt::format("UPDATE {} SET ", store_.Table("job"));
        sql += Adding("succeededitemcount", ItemsOf(results, true));
        sql += Adding("faileditemcount", ItemsOf(results, false));
        sql += fmt::format(
            "lastcompletiondt = {}, sumoftimeincsq = COALESCE(sumoftimeincsq, 0) + {} WHERE jobguid = {}",
            store_.Literal(results.back().end), DoubleText(sumOfSquaredIncrements), job_);
        std::vector<std::string> all;
        all.reserve(results.size());
        for (const ItemResult& result : results) all.push_back(result.item);
        return sql +
               fmt::format(" AND EXISTS (SELECT 1 FROM {} WHERE {})", store_.Table("JobItem"), Held(all));
    }

    std::string Write(const Outcome& outcome, const std::vector<std::string>& items) const {
        const auto& [succeeded, start, end, note] = outcome;
        const std::string noting = note.empty() ? "" : ", failurenote = " + store_.Literal(note);
        return fmt::format("UPDATE {} SET jobitemstateid = {}, startdt = {}, enddt = {}{} WHERE {}",
                           store_.Table("JobItem"), store_.Literal(succeeded ? kComplete : kFailedState),
                           store_.Literal(start), store_.Literal(end), noting, Held(items));
    }

private:
    /// Where they lie is said too: to read one stretch of an index costs an engine far less than to look for
    /// each key by itself.
    std::string Held(const std::vector<std::string>& items) const {
        return fmt::format("{} AND jobitemguid IN ({}) AND jobtaskguid = {} AND jobitemstateid = 'RUNNING'",
                           place_, store_.Literals(items), task_);
    }
    std::string Adding(const char* column, const std::vector<std::string>& items) const {
        if (items.empty()) return {};
        return fmt::format("{0} = COALESCE({0}, 0) + (SELECT COUNT(*) FROM {1} WHERE {2}), ", column,
                           store_.Table("JobItem"), Held(items));
    }

    JobStore& store_;
    std::string job_;
    std::string task_;
    std::string place_;
};

}  // namespace

void FinishItems(JobStore& store, const TaskName& name, const std::vector<ItemResult>& results,
                 double sumOfSquaredIncrements) {
    if (results.empty()) return;
    const Finishing finishing(store, name, results);
    std::vector<std::string> statements{finishing.LockTask(results.back().item),
                                        finishing.Count(results, sumOfSquaredIncrements)};
    for (const auto& [outcome, items] : ByOutcome(results)) {
        statements.push_back(finishing.Write(outcome, items));
    }
    store.ExecuteTogether(statements);
}

}  // namespace kxjob::command
