#include "defaults/collections/hash_keyed_collection.h"

#include "automation/runtime_error.h"
#include "kxjob/automation_error.h"

namespace kxjob {

void HashKeyedCollection::Add(const Value& item, const std::string& key) {
    if (!items_.try_emplace(key, item).second) RaiseRuntimeError(error_number::kDuplicateKey);
}

bool HashKeyedCollection::Exists(const std::string& key) {
    return items_.contains(key);
}

Value HashKeyedCollection::Item(const std::string& key) {
    const auto found = items_.find(key);
    if (found == items_.end()) RaiseRuntimeError(error_number::kInvalidCall);
    return found->second;
}

}  // namespace kxjob
