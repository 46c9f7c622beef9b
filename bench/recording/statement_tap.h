#pragma once

#include <functional>
#include <string>
#include <vector>

#include "driver/bare_driver.h"

namespace kxjob::bench {

/// The statements that reach the drivers while `call` runs, in their order, as the drivers see them: what is
/// bound has become part of the text where the driver tells it so. `call` runs on a thread of its own, whose
/// connection to the store is opened before.
std::vector<Statement> StatementsOf(const std::string& connectionString, const std::function<void()>& call);

/// Each GUID that the library made up during a recorded call, replaced by a new one: the recorded INSERTs run
/// again. The GUIDs of the benchmarks' own rows begin with kOwnGuid and stay.
std::vector<Statement> WithNewGuids(const std::vector<Statement>& statements);

inline constexpr std::string_view kOwnGuid = "{00000000-";

/// Where a tap puts what it sees on this thread; null when nothing is recorded.
std::vector<Statement>*& Recording();

/// Lets SQLite report what runs on the connections that are opened while it lives.
class SqliteTap {
public:
    SqliteTap();
    SqliteTap(const SqliteTap&) = delete;
    SqliteTap& operator=(const SqliteTap&) = delete;
    ~SqliteTap();
};

}  // namespace kxjob::bench
