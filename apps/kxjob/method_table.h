#pragma once

#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "kxjob/job_helper.h"
#include "value_json.h"

namespace kxjob::command {

/// One published argument of a method.
struct MethodArgument {
    std::string name;
    std::string kind;
    bool isRequired = false;
    bool isByReference = false;
};

/// The arguments that a caller has given, as text, by published name.
using GivenArguments = std::map<std::string, std::string>;

/// A method with its arguments, ready to run. Gives the result and the by-reference arguments as they are
/// afterwards, under their names.
using PreparedCall = std::function<Json(JobHelper&)>;

/// One public method of JobHelper.
struct Method {
    std::string name;
    std::vector<MethodArgument> arguments;
    /// Raises UsageError for a required argument that is missing, and for a value of the wrong kind.
    std::function<PreparedCall(const GivenArguments&)> prepare;
};

/// All of them, in the order in which they are declared.
std::span<const Method> Methods();

/// Null for a name that is not published.
const Method* FindMethod(std::string_view name);

}  // namespace kxjob::command
