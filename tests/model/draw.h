#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "kxjob/data_store_provider.h"
#include "kxjob/value.h"
#include "model/model_tables.h"

namespace kxjob::model {

inline constexpr const char* kQualifier = "kx_";
inline constexpr const char* kProductionState = "{00000000-0000-4000-8000-0000000000E1}";
inline constexpr const char* kDevelopmentState = "{00000000-0000-4000-8000-0000000000E2}";
inline constexpr const char* kNullGuid = "{00000000-0000-0000-0000-000000000000}";

/// The three arguments that say where the tables are.
struct Address {
    std::string connection;
    DataStoreProvider provider = dspSqlite;
    std::string qualifier;
    /// How many characters the engine keeps in identifiers and machine names; a longer one is a failed
    /// statement there (MariaDB: 255).
    std::size_t shortTextLimit = std::string::npos;

    /// Raises what a statement raises where no such tables are.
    void CheckReachable() const;
    void CheckShort(const Value& value) const;
};

/// Draws arguments from small pools, so that they collide, by numbers that rapidcheck has made: all of them 0
/// draws what is most usual. Keeps what it has drawn for the report.
class Draw {
public:
    Draw(std::span<const std::uint16_t> numbers, Address place)
        : numbers_(numbers), place_(std::move(place)) {}

    std::size_t Below(std::size_t limit);
    /// Where the tables are; now and then a wrong place.
    Address Place();
    /// The same after the replacement from the configuration, which names the tables' true place.
    Address Configured(Address given) const;

    std::string JobGuid(const Tables& tables);
    std::string NewJobGuid();
    std::string TaskGuid(const Tables& tables);
    std::string ItemGuid(const Tables& tables);
    /// The lock that a job holds, or any.
    std::string LockGuid(const Tables& tables, const std::string& job);
    /// A job that has items, or any.
    std::string JobOfItems(const Tables& tables);
    std::string JobTypeId();
    std::string ApplicationState();
    std::string State();
    std::string Time();
    /// Any text that a store can keep, now and then one that none can.
    std::string Text();
    /// The same or what a caller's variant may hold besides.
    Value Variant();
    std::int32_t Number();
    std::int32_t ItemCount();
    double Duration();
    bool Truth();
    DataStoreProvider Provider();

    const std::string& Drawn() const { return drawn_; }

private:
    std::string One(const std::vector<std::string>& pool);
    std::string Existing(const Table& table, const std::string& column);
    std::string Kept(const std::string& text);

    std::span<const std::uint16_t> numbers_;
    Address place_;
    std::string drawn_;
};

}  // namespace kxjob::model
