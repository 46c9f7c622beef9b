#pragma once

#include <string>

#include "collaborators/sql_formatter.h"

namespace kxjob {

/// Literals that every engine reads alike, provided its sessions take backslashes in a text as they are. A
/// text goes between single quotes with its quotes doubled; Null and Empty are NULL; a Boolean is 1 or 0; a
/// double is the shortest text that reads back as the same number. Raises 0x80040000 + 706 for a text that no
/// store can keep, for NaN and for an infinity; Type mismatch for an array and for an object.
class StandardSqlFormatter : public SqlFormatter {
public:
    std::string FormatValue(const Value& value) override;
    std::string FormatGuid(const std::string& guid) override;
};

}  // namespace kxjob
