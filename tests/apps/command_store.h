#pragma once

#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "apps/command_process.h"
#include "contract/native/file_engines.h"
#include "kxjob/store.h"

namespace kxjob::testing_support {

/// A store with the tables of the qualifier "c_" and the job type TYPE, and the command that works on it.
class CommandStore {
public:
    explicit CommandStore(const ContractEngine& engine = SqliteFile());

    /// The arguments with the options that name this store.
    std::vector<std::string> OnThisStore(std::vector<std::string> arguments) const;
    Finished Run(const std::vector<std::string>& arguments, const std::string& input = {}) const;
    /// What the command prints with --json; throws unless it is done.
    nlohmann::json Answer(std::vector<std::string> arguments, const std::string& input = {}) const;

    /// A QUEUED job with these items; gives its GUID. An earlier one of the same application state goes.
    std::string MakeJob(const std::vector<std::string>& items, const std::string& applicationState) const;
    Store& Tables() { return tables_; }
    /// The one cell of a query's one row.
    Value Cell(const std::string& sql);
    const TemporaryFolder& Folder() const { return folder_; }

private:
    TemporaryFolder folder_;
    std::unique_ptr<ContractStore> store_;
    DataStoreProvider provider_;
    std::string connectionString_;
    Store tables_;
};

/// An application state; `digit` tells it from others.
std::string StateGuid(char digit);

}  // namespace kxjob::testing_support
