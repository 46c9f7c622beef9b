#pragma once

#include <span>
#include <string>

#include "kxjob/data_store_provider.h"
#include "kxjob/export.h"
#include "kxjob/value.h"

namespace kxjob {

/// The store behind a connection string, for what the methods of JobHelper leave to administrators: setting
/// it up, and statements of one's own. Runs on the calling thread's connection.
class KXJOB_EXPORT Store {
public:
    Store(std::string connectionString, DataStoreProvider provider, std::string nameQualifier);

    /// Makes an empty database where the engine keeps one in a file that does not exist yet; else does
    /// nothing. Raises 0x80040000 + 704 when it cannot be made.
    void CreateDatabase();
    /// Creates the job tables, and the small tables of the stand-in components (flags, history, application
    /// states, subsystems), in an existing database and schema. Safe to run twice, and at once from several
    /// processes.
    void CreateTables();
    /// What CreateTables runs, without running it: statements that end in ";" and a line break. Connects to
    /// nothing. Raises 0x80040000 + 705 for a provider that has no script.
    std::string CreationScript();
    /// Runs one statement that changes data. Raises 0x80040000 + 703 when it fails.
    void Execute(const std::string& sql);
    /// Runs one SELECT; Empty when there is no row.
    Value Query(const std::string& sql);
    /// Runs the statements in order as one transaction, in one exchange where the engine takes several at
    /// once. Raises 0x80040000 + 703 when one fails; nothing of them stays then.
    void ExecuteTogether(std::span<const std::string> statements);
    /// What the database system calls itself, "PostgreSQL", and its version as it writes it.
    std::string EngineName();
    std::string EngineVersion();
    /// The time now by the store's clock, UTC: "2026-03-01T09:30:15.123Z". Empty for a database system whose
    /// clock this library does not know how to ask for.
    std::string NowISODateTime();
    /// The SQL literal of a value. Raises 0x80040000 + 706 for a text that no store can keep.
    std::string Literal(const Value& value);
    /// The qualifier followed by a base table name.
    std::string Table(const std::string& baseName) const { return nameQualifier_ + baseName; }

private:
    std::string JobTablesScript();
    std::string StandInTablesScript();
    void RunScript(const std::string& script);

    std::string connectionString_;
    DataStoreProvider provider_;
    std::string nameQualifier_;
};

}  // namespace kxjob
