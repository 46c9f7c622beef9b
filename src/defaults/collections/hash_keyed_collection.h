#pragma once

#include <string>
#include <unordered_map>

#include "collaborators/keyed_collection.h"

namespace kxjob {

/// Raises "key already in the collection" (0x800A01C9) for a second `Add`, "invalid procedure call or
/// argument" (0x800A0005) for a missing key.
class HashKeyedCollection : public KeyedCollection {
public:
    void Add(const Value& item, const std::string& key) override;
    bool Exists(const std::string& key) override;
    Value Item(const std::string& key) override;

private:
    std::unordered_map<std::string, Value> items_;
};

}  // namespace kxjob
