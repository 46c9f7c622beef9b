#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "kxjob/configured_connection.h"
#include "value_json.h"

namespace kxjob::command {

/// An item as lists show it.
struct ItemRecord {
    std::string guid;
    std::string identifier;
    std::string state;  // empty: it waits to be worked on
    std::int64_t sequence = 0;
};

/// An item whole.
struct ItemDetails {
    std::string guid;
    std::string identifier;
    std::string state;
    std::string data;
    std::optional<std::string> started;
    std::optional<std::string> ended;
    std::string note;  // of its failure, or what it gave
};

/// By ascending sequence; nothing for a job without items.
std::vector<ItemRecord> ReadItems(const StoreConnection& store, const std::string& job);

/// The item with this GUID, as typed or as GuidText makes it. Raises 0x80040000 + 702 when there is none.
ItemDetails ReadItem(const StoreConnection& store, const std::string& guid);

Json ToJson(const ItemRecord& item);
Json ToJson(const ItemDetails& item);

}  // namespace kxjob::command
