#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "kxjob/automation_error.h"
#include "kxjob/value.h"

namespace kxjob::command {

using Json = nlohmann::ordered_json;

/// Empty is {"empty":true}, Null is null; a row array {"rows":[...]} holds one list a row, in column order; a
/// general array is a list, nested for more dimensions, and {"lower":n,"items":[...]} where its lower bound
/// is not 0; an object is {"object":"its name"}.
Json ToJson(const Value& value);

/// {"number","source","description"}, the number signed.
Json ToJson(const AutomationError& error);

/// The value of a JSON text; lists whose items are lists of one shape become one array of more dimensions.
/// Raises UsageError for an object that stands for no value.
Value FromJson(const Json& json);

/// Parses a text. Raises UsageError when it is no JSON.
Json ParseJson(const std::string& text);

/// JSON on one line. Bytes that are no UTF-8 become U+FFFD.
std::string OneLine(const Json& json);

}  // namespace kxjob::command
