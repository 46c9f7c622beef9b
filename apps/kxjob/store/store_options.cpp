#include "store/store_options.h"

#include "usage_error.h"

namespace kxjob::command {

void StoreOptions::AddTo(CLI::App& command) {
    command.add_option("--connection", connection_, "The store, e.g. Driver=SQLite;Database=FILE")
        ->type_name("STRING");
    command.add_option("--provider", provider_, "Whose creation scripts: 5 SQLite (default)")
        ->type_name("CODE");
    command.add_option("--qualifier", qualifier_, "What stands in front of every table name")
        ->type_name("TEXT");
}

StoreConnection StoreOptions::Resolve() const {
    StoreConnection store =
        connection_ ? StoreConnection{*connection_, dspSqlite, {}} : ConfiguredConnection();
    store.provider = provider_.value_or(store.provider);
    store.nameQualifier = qualifier_.value_or(store.nameQualifier);
    return store;
}

StoreConnection StoreOptions::ResolveForJobs() const {
    StoreConnection store = Resolve();
    if (store.nameQualifier.empty() && (connection_ || qualifier_)) {
        throw UsageError(
            "Jobs need --qualifier with a text in it: with an empty one they are looked for in the store that"
            " the configuration names.");
    }
    return store;
}

StoreConnection StoreOptions::ResolveForScript() const {
    if (!provider_) return Resolve();
    return {connection_.value_or(""), *provider_, qualifier_.value_or("")};
}

}  // namespace kxjob::command
