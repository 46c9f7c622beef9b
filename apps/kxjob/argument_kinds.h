#pragma once

#include <cstdint>
#include <string>

#include "kxjob/collection.h"
#include "kxjob/value.h"

namespace kxjob::command {

/// What the help of the command calls an argument of this type.
template <typename T>
inline constexpr const char* kKindName = nullptr;
template <>
inline constexpr const char* kKindName<std::string> = "TEXT";
template <>
inline constexpr const char* kKindName<std::int32_t> = "WHOLE NUMBER";
template <>
inline constexpr const char* kKindName<double> = "NUMBER";
template <>
inline constexpr const char* kKindName<bool> = "TRUE|FALSE";
template <>
inline constexpr const char* kKindName<Value> = "TEXT OR JSON";
template <>
inline constexpr const char* kKindName<Collection> = "JSON OBJECT";

// Each reads the text of the command line into an argument. Raises UsageError when it is no value of that
// kind.

void ReadArgument(const std::string& text, std::string& argument);
void ReadArgument(const std::string& text, std::int32_t& argument);
void ReadArgument(const std::string& text, double& argument);
/// true, false, yes, no in any letter case, 1, 0, and -1, which is automation's True.
void ReadArgument(const std::string& text, bool& argument);
/// JSON when it begins with "[" or "{", except for a GUID; any other text as it is.
void ReadArgument(const std::string& text, Value& argument);
/// A JSON object: its members are the items, their names the keys.
void ReadArgument(const std::string& text, Collection& argument);

}  // namespace kxjob::command
