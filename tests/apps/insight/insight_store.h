#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "apps/command_process.h"
#include "files/temporary_folder.h"
#include "kxjob/configured_connection.h"
#include "kxjob/store.h"

namespace kxjob::testing_support {

/// A store with one job type, CAN, that this machine can work on, and one, CANNOT, that it cannot.
class InsightStore {
public:
    InsightStore();

    const std::string& Connection() const { return connection_; }
    TemporaryFolder& Folder() { return folder_; }
    Store& Tables() { return store_; }
    StoreConnection Where() const { return {connection_, dspSqlite, "k_"}; }

    void AddJob(const std::string& guid, const std::string& state, const std::string& type = "CAN",
                int totalItems = 0);
    void AddTask(const std::string& guid, const std::string& job, const std::string& started = "",
                 const std::string& claim = "", const std::string& lock = "");
    void AddItem(const std::string& guid, const std::string& job, int sequence, const std::string& state = "",
                 const std::string& started = "", const std::string& ended = "");

    /// The options that name this store, behind these arguments.
    std::vector<std::string> Arguments(std::vector<std::string> arguments) const;
    /// Runs the command on this store, without a configuration.
    Finished Run(std::vector<std::string> arguments);
    /// The same with --json: what it prints.
    nlohmann::json Json(std::vector<std::string> arguments);

private:
    TemporaryFolder folder_;
    std::string connection_ = "Driver=SQLite;Database=" + folder_.File("jobs.db");
    Store store_{connection_, dspSqlite, "k_"};
};

}  // namespace kxjob::testing_support
