#pragma once

#include <string>

#include "kxjob/value.h"

namespace kxjob {

/// Turns values into SQL literals that mean the same on every engine. Equal inputs give equal literals.
class SqlFormatter {
public:
    virtual ~SqlFormatter() = default;
    /// A text becomes a quoted literal. Raises for a text that no store can keep, for an array and for an
    /// object.
    virtual std::string FormatValue(const Value& value) = 0;
    /// The literal of a key, which need not be a GUID.
    virtual std::string FormatGuid(const std::string& guid) = 0;
};

}  // namespace kxjob
