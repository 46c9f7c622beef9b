#pragma once

#include <string>

#include "kxjob/value.h"

namespace kxjob {

/// Values under text keys, compared exactly.
class KeyedCollection {
public:
    virtual ~KeyedCollection() = default;
    /// Raises when the key is there already.
    virtual void Add(const Value& item, const std::string& key) = 0;
    virtual bool Exists(const std::string& key) = 0;
    /// Raises when the key is not there.
    virtual Value Item(const std::string& key) = 0;
};

}  // namespace kxjob
