#include "stores/rows.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <functional>

#include "kxjob/caller_texts.h"

namespace kxjob::bench {
namespace {

constexpr int kRowsInStatement = 1000;

std::string Quoted(const std::string& text) {
    return text.empty() ? "NULL" : "'" + text + "'";
}

/// The same for the same number on every store, and in no order. It begins as WithNewGuids wants it.
std::string OwnGuid(int number) {
    constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15U;
    const std::uint64_t spread = (static_cast<std::uint64_t>(number) + 1) * kOdd;
    std::array<char, 40> guid{};
    std::snprintf(guid.data(), guid.size(), "{00000000-%04X-4000-8000-%012llX}",
                  static_cast<unsigned>(spread >> 48U),
                  static_cast<unsigned long long>(spread & 0xFFFFFFFFFFFFU));
    return guid.data();
}

void AddRows(BenchStore& store, const std::string& insert, int count,
             const std::function<std::string(int)>& row) {
    store.RunBare("BEGIN");
    for (int first = 0; first < count; first += kRowsInStatement) {
        std::string sql = insert + " VALUES ";
        for (int i = first; i < std::min(count, first + kRowsInStatement); ++i) {
            sql.append(i == first ? "(" : ", (").append(row(i)).append(")");
        }
        store.RunBare(sql);
    }
    store.RunBare("COMMIT");
}

}  // namespace

void AddItems(BenchStore& store, const std::string& jobGuid, int count, const std::string& state) {
    AddRows(store,
            "INSERT INTO %q%JobItem (jobguid, jobitemguid, identifier, sequence, jobitemstateid,"
            " startdt, enddt)",
            count, [&](int i) {
                return Quoted(jobGuid) + ", " + Quoted(NewGuid()) + ", 'item " + std::to_string(i) + "', " +
                       std::to_string(i) + ", " + Quoted(state) +
                       ", '2026-03-01T09:30:15.123Z', '2026-03-01T09:31:00.000Z'";
            });
}

std::vector<std::string> AddJobs(BenchStore& store, int count, const std::string& type,
                                 const std::string& state, bool runningTask) {
    std::vector<std::string> guids;
    for (int i = 0; i < count; ++i) guids.push_back(OwnGuid(i));
    AddRows(store,
            "INSERT INTO %q%job (jobguid, jobtypeid, description, parameters, appstateguid, jobstateid,"
            " totalitemcount)",
            count, [&](int i) {
                return Quoted(guids[static_cast<std::size_t>(i)]) + ", " + Quoted(type) +
                       ", 'a job', '<parameters/>', '{00000000-0000-4000-8000-00000000E001}', " +
                       Quoted(state) + ", 10";
            });
    if (!runningTask) return guids;
    AddRows(store, "INSERT INTO %q%jobtask (jobtaskguid, jobguid, jobtaskstateid)", count, [&](int i) {
        return Quoted(NewGuid()) + ", " + Quoted(guids[static_cast<std::size_t>(i)]) + ", 'RUNNING'";
    });
    return guids;
}

void AddType(BenchStore& store, const std::string& type, const std::string& component) {
    store.RunBare("INSERT INTO %q%JobType (jobtypeid, description, implprogid, notificationprogid) VALUES (" +
                  Quoted(type) + ", 'measured', " + Quoted(component) + ", '')");
}

}  // namespace kxjob::bench
