#include "work/protocol/item_lots.h"

#include <fmt/format.h>

#include <algorithm>

#include "kxjob/caller_texts.h"

namespace kxjob::command {
namespace {

constexpr std::int64_t kWidestWindow = 65536;

std::int64_t WholeNumber(const Value& value) {
    return static_cast<std::int64_t>(value.ToDouble());
}

}  // namespace

std::vector<ClaimedItem> ItemLots::Claim(std::size_t most) {
    while (true) {
        const std::vector<Waiting> waiting = FirstWaiting(most);
        if (waiting.empty()) return {};
        Take(waiting, most);
        const std::int64_t last = waiting[std::min(most, waiting.size()) - 1].sequence;
        std::vector<ClaimedItem> claimed =
            HeldWithin(fmt::format(" AND sequence BETWEEN {} AND {}", waiting.front().sequence, last));
        if (!claimed.empty()) return claimed;
        const std::string job = fmt::format("SELECT jobstateid FROM {} WHERE jobguid = {}",
                                            store_.Table("job"), store_.Literal(name_.job));
        const bool mayClaim = store_.Cell(job).ToJoinedText() == kRunning &&
                              StandingsOf(store_, {name_.task}).front().isRunning;
        if (!mayClaim) return {};  // else others were quicker
    }
}

std::optional<SequenceRange> ItemLots::Whereabouts() const {
    return isLastLotAll_ ? std::optional(lastLot_) : std::nullopt;
}

std::vector<ClaimedItem> ItemLots::Held() {
    isLastLotAll_ = false;
    return HeldWithin("");
}

std::vector<ItemLots::Waiting> ItemLots::FirstWaiting(std::size_t most) {
    const Value hint = store_.Cell(fmt::format("SELECT nextjobitem FROM {} WHERE jobguid = {}",
                                               store_.Table("job"), store_.Literal(name_.job)));
    if (!hint.IsNull()) {
        const std::int64_t from = WholeNumber(hint);
        std::vector<Waiting> waiting = WaitingFrom(from, most);
        if (!waiting.empty()) return waiting;
        const Value next = LowestWaitingFrom(store_, name_.job, from);
        if (!next.IsNull()) return WaitingFrom(WholeNumber(next), most);
    }
    const Value first = LowestWaiting(store_, name_.job);
    return first.IsNull() ? std::vector<Waiting>() : WaitingFrom(WholeNumber(first), most);
}

/// Where sequence numbers have gaps the window widens until it holds a lot.
std::vector<ItemLots::Waiting> ItemLots::WaitingFrom(std::int64_t first, std::size_t most) {
    window_ = std::max(window_, static_cast<std::int64_t>(most));
    const Value rows = store_.Query(fmt::format(
        "SELECT jobitemguid, sequence FROM {} WHERE jobguid = {} AND sequence BETWEEN {} AND {} AND {}"
        " ORDER BY sequence, jobitemguid",
        store_.Table("JobItem"), store_.Literal(name_.job), first, first + window_ - 1, kWaiting));
    std::vector<Waiting> waiting;
    waiting.reserve(static_cast<std::size_t>(RowCount(rows)));
    for (std::int32_t row = 0; row < RowCount(rows); ++row) {
        waiting.push_back({rows.Rows().Cell(0, row).ToText(), WholeNumber(rows.Rows().Cell(1, row))});
    }
    if (waiting.size() < most) {
        window_ = std::min(window_ * 2, kWidestWindow);
    } else if (waiting.size() > 2 * most) {
        window_ /= 2;
    }
    return waiting;
}

/// The task's row, the job's, then the items': everything that changes more than one of them takes their
/// locks in this order.
void ItemLots::Take(const std::vector<Waiting>& waiting, std::size_t most) {
    const std::size_t count = std::min(most, waiting.size());
    const std::int64_t first = waiting.front().sequence;
    const std::int64_t last = waiting[count - 1].sequence;
    lastLot_ = {first, last};
    const bool lastIsShared = count < waiting.size() && waiting[count].sequence == last;
    std::string chosen;
    if (lastIsShared) {  // the range of numbers alone would take more than the lot
        std::vector<std::string> guids;
        guids.reserve(count);
        for (std::size_t i = 0; i < count; ++i) guids.push_back(waiting[i].guid);
        chosen = fmt::format(" AND jobitemguid IN ({})", store_.Literals(guids));
    }
    const std::string job = store_.Literal(name_.job);
    const std::string task = store_.Literal(name_.task);
    const std::int64_t next = lastIsShared ? last : last + 1;
    store_.ExecuteTogether(
        {fmt::format("UPDATE {} SET lastjobitem = lastjobitem WHERE jobtaskguid = {}"
                     " AND jobtaskstateid = 'RUNNING'",
                     store_.Table("jobtask"), task),
         fmt::format("UPDATE {} SET nextjobitem = {} WHERE jobguid = {} AND jobstateid = 'RUNNING'"
                     " AND nextjobitem < {}",
                     store_.Table("job"), next, job, next),
         fmt::format("UPDATE {} SET jobitemstateid = 'RUNNING', jobtaskguid = {}, startdt = {}, enddt = NULL"
                     " WHERE jobguid = {} AND sequence BETWEEN {} AND {} AND {}{}"
                     " AND EXISTS (SELECT 1 FROM {} WHERE jobtaskguid = {} AND jobtaskstateid = 'RUNNING')"
                     " AND EXISTS (SELECT 1 FROM {} WHERE jobguid = {} AND jobstateid = 'RUNNING')",
                     store_.Table("JobItem"), task, store_.Literal(NowISODateTime()), job, first, last,
                     kWaiting, chosen, store_.Table("jobtask"), task, store_.Table("job"), job)});
}

std::vector<ClaimedItem> ItemLots::HeldWithin(const std::string& range) {
    const Value rows = store_.Query(
        fmt::format("SELECT jobitemguid, sequence, identifier, data, failurenote FROM {} WHERE jobguid = {}{}"
                    " AND jobtaskguid = {} AND jobitemstateid = 'RUNNING' ORDER BY sequence, jobitemguid",
                    store_.Table("JobItem"), store_.Literal(name_.job), range, store_.Literal(name_.task)));
    std::vector<ClaimedItem> items;
    items.reserve(static_cast<std::size_t>(RowCount(rows)));
    for (std::int32_t row = 0; row < RowCount(rows); ++row) {
        const RowArray& cells = rows.Rows();
        items.push_back({cells.Cell(0, row).ToText(), WholeNumber(cells.Cell(1, row)),
                         cells.Cell(2, row).ToJoinedText(), cells.Cell(3, row).ToJoinedText(),
                         cells.Cell(4, row).ToJoinedText()});
    }
    return items;
}

Value LowestWaiting(JobStore& store, const std::string& job) {
    return store.Cell(fmt::format("SELECT MIN(sequence) FROM {} WHERE jobguid = {} AND {}",
                                  store.Table("JobItem"), store.Literal(job), kWaiting));
}

Value LowestWaitingFrom(JobStore& store, const std::string& job, std::int64_t from) {
    return store.Cell(fmt::format("SELECT MIN(sequence) FROM {} WHERE jobguid = {} AND sequence >= {} AND {}",
                                  store.Table("JobItem"), store.Literal(job), from, kWaiting));
}

bool HasUnfinishedItems(JobStore& store, const std::string& job) {
    return !store
                .Cell(fmt::format("SELECT MIN(sequence) FROM {} WHERE jobguid = {} AND ({}"
                                  " OR jobitemstateid = 'RUNNING')",
                                  store.Table("JobItem"), store.Literal(job), kWaiting))
                .IsNull();
}

}  // namespace kxjob::command
