#include "model/draw.h"

#include <algorithm>
#include <cctype>

#include "kxjob/array.h"
#include "model/value_text.h"

namespace kxjob::model {
namespace {

using namespace std::string_literals;

const std::vector<std::string> kJobGuids = {
    "{00000000-0000-4000-8000-0000000000A1}",  "{00000000-0000-4000-8000-0000000000A2}",
    "{00000000-0000-4000-8000-0000000000A3}",  "{00000000-0000-4000-8000-0000000000A4}",
    "{00000000-0000-4000-8000-0000000000A5}",  "{00000000-0000-4000-8000-0000000000a1}",
    "{00000000-0000-4000-8000-0000000000A1} ", "",
    "Zo\u00EB \u65E5\u672C \U0001F600",
};

/// What the guard refuses, what no store can keep, and what is only unknown.
const std::vector<std::string> kOddKeys = {
    "x'y",         "x;y",  "x--y", "x/*y", "x*/y",      "x\ty", "x\x7Fy", "x\0y"s, "x\xFFy", "x\xED\xA0\x80y",
    "no such key", "x\"y", "x\\",  "%",    "x - y / z",
};

const std::vector<std::string> kTexts = {
    "plain",
    "",
    "it's",
    "O''Brien''",
    "a\\b\\",
    "Zo\u00EB \u65E5\u672C",
    "\U0001F600",
    "x",
    "X",
    "x ",
    " x",
    "two\r\nlines\t\x1A",
    "'); DROP TABLE kx_job; --",
    "/* ? */ :a $1 %s {d '2026-03-01'}",
    "NULL",
    "--",
    "<parameters><parameter>1 & 2</parameter></parameters>",
    std::string(300, 'w') + "'",
};

const std::vector<std::string> kUnstorable = {"a\0b"s, "\xFF", "\xC0\xAF", "cut \xED\xA0\x80"};

}  // namespace

void Address::CheckReachable() const {
    if (connection.empty()) RaiseOwn(704);
    if (qualifier != kQualifier) RaiseOwn(703);
}

/// The long texts of the pool are of one byte a character.
void Address::CheckShort(const Value& value) const {
    if (value.IsText() && value.Text().size() > shortTextLimit) RaiseOwn(703);
}

std::size_t Draw::Below(std::size_t limit) {
    if (numbers_.empty()) return 0;
    const std::size_t number = numbers_.front();
    numbers_ = numbers_.subspan(1);
    return number % limit;
}

std::string Draw::Kept(const std::string& text) {
    drawn_ += (drawn_.empty() ? "" : ", ") + ValueText(text);
    return text;
}

std::string Draw::One(const std::vector<std::string>& pool) {
    return Kept(pool[Below(pool.size())]);
}

DataStoreProvider Draw::Provider() {
    const std::vector<DataStoreProvider> pool = {dspSqlite,    dspPostgreSql, dspMariaDb,
                                                 dspSqlServer, dspOracle,     DataStoreProvider{9}};
    return pool[Below(pool.size())];
}

Address Draw::Place() {
    Address address = place_;
    address.provider = Provider();
    switch (Below(32)) {
        case 28: address.connection.clear(); break;
        case 29: address.qualifier.clear(); break;
        case 30: address.qualifier = "app_"; break;
        case 31: {
            const std::vector<std::string> hostile = {"kx_; ", "kx'", "kx_ ", "kx_job --", "\"kx", "kx\xFF"};
            address.qualifier = hostile[Below(hostile.size())];
            break;
        }
        default: return address;
    }
    Kept(address.connection.empty() ? "no connection" : "qualifier " + address.qualifier);
    return address;
}

Address Draw::Configured(Address given) const {
    return given.connection.empty() || given.qualifier.empty() ? place_ : given;
}

/// A key of the table, or one that differs from it in letter case or by a blank, or any.
std::string Draw::Existing(const Table& table, const std::string& column) {
    const std::size_t kind = Below(24);
    if (kind == 23 || table.rows.empty()) return One(kOddKeys);
    const Value& value = Held(table.rows[Below(table.rows.size())], column);
    std::string key = value.IsNull() ? std::string() : value.Text();
    if (kind == 22) key += ' ';
    if (kind == 21) {
        std::transform(key.begin(), key.end(), key.begin(), [](char character) {
            return static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
        });
    }
    return Kept(key);
}

std::string Draw::JobGuid(const Tables& tables) {
    return Below(8) == 7 ? One(kJobGuids) : Existing(tables.job, "jobguid");
}

std::string Draw::NewJobGuid() {
    return Below(16) == 15 ? One(kOddKeys) : One(kJobGuids);
}

std::string Draw::TaskGuid(const Tables& tables) {
    return Existing(tables.jobTask, "jobtaskguid");
}

std::string Draw::ItemGuid(const Tables& tables) {
    return Existing(tables.jobItem, "jobitemguid");
}

std::string Draw::LockGuid(const Tables& tables, const std::string& job) {
    const std::vector<const Row*> own = tables.job.Where([&](const Row& row) {
        return Holds(row, "jobguid", job) && !Held(row, "jobeditorlockguid").IsNull();
    });
    if (own.empty() || Below(4) == 3) return Existing(tables.job, "jobeditorlockguid");
    return Kept(Held(*own.front(), "jobeditorlockguid").Text());
}

std::string Draw::JobOfItems(const Tables& tables) {
    return Below(4) == 3 ? JobGuid(tables) : Existing(tables.jobItem, "jobguid");
}

std::string Draw::JobTypeId() {
    if (Below(16) == 15) return One(kOddKeys);
    return One({"TYPE", "TYPE", "OTHER", "OTHER", "type", "TYPE", "GHOST", "TYPE ", "HOLLOW", "7", ""});
}

std::string Draw::ApplicationState() {
    if (Below(16) == 15) return One(kOddKeys);
    return One({kProductionState, kDevelopmentState, "{00000000-0000-4000-8000-0000000000E3}",
                "{00000000-0000-4000-8000-0000000000e1}", kNullGuid, kNullGuid, ""});
}

std::string Draw::State() {
    if (Below(24) == 23) return One(kOddKeys);
    return One({"QUEUED", "RUNNING", "QUEUED", "RUNNING", "CREATING", "READY", "COMPLETE", "CANCELLED",
                "FAILED", "queued", "RUNNING ", "", "<odd> & \u00EB"});
}

std::string Draw::Time() {
    return One({"2026-03-01T09:30:15.123Z", "", "2026-03-01T09:31:00.000Z", "it's no time"});
}

std::string Draw::Text() {
    return Below(24) == 23 ? One(kUnstorable) : One(kTexts);
}

Value Draw::Variant() {
    if (Below(4) != 3) return Text();
    const std::vector<Value> pool = {
        42, Null{}, Value(), true, false, 0.5, std::int64_t{5000000000}, Value(Array::List({"x"}))};
    Value value = pool[Below(pool.size())];
    drawn_ += (drawn_.empty() ? "" : ", ") + ValueText(value);
    return value;
}

std::int32_t Draw::Number() {
    const std::vector<std::int32_t> pool = {1, 0, 2, 3, -1, 250, 2147483647, -2147483647 - 1};
    const std::int32_t number = pool[Below(pool.size())];
    Kept(std::to_string(number));
    return number;
}

std::int32_t Draw::ItemCount() {
    const std::vector<std::int32_t> pool = {1, 3, 250, 2147483647, 1, 2, 0, -1};
    const std::int32_t count = pool[Below(pool.size())];
    Kept(std::to_string(count));
    return count;
}

double Draw::Duration() {
    const std::vector<double> pool = {60, 0, 0.5, -1.25, 1e20, 86400.125};
    const double duration = pool[Below(pool.size())];
    Kept(std::to_string(duration));
    return duration;
}

bool Draw::Truth() {
    const bool truth = Below(2) == 0;
    Kept(truth ? "True" : "False");
    return truth;
}

}  // namespace kxjob::model
