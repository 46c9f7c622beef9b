#pragma once

#include <string_view>

namespace kxjob {

/// A creation script before its qualifier is put in: %q% stands for the whole of it, %p% for its part within
/// the schema. Statements end in ";" and a line break, and do nothing when what they create is there.
struct ScriptText {
    std::string_view name;
    std::string_view tables;
    std::string_view indexes;
};

}  // namespace kxjob
