#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "kxjob/configured_connection.h"

namespace kxjob::command {

/// --connection, --provider and --qualifier, as every sub-command takes them. Without --connection all three
/// come from the configuration, but for what is given.
class StoreOptions {
public:
    void AddTo(CLI::App& command);
    bool NamesStore() const { return connection_.has_value(); }
    /// Raises 0x80040000 + 704 when neither the options nor the configuration name a store.
    StoreConnection Resolve() const;
    /// The same for the methods on jobs, to which an empty qualifier means the store of the configuration.
    /// Raises UsageError where that would be another store than the options name.
    StoreConnection ResolveForJobs() const;
    /// For what asks no store: a given provider is enough, and the configuration is left alone then.
    StoreConnection ResolveForScript() const;

private:
    std::optional<std::string> connection_;
    std::optional<DataStoreProvider> provider_;
    std::optional<std::string> qualifier_;
};

}  // namespace kxjob::command
