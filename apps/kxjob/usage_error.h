#pragma once

#include <stdexcept>

namespace kxjob::command {

/// The command was called wrongly; `what()` is one sentence for the user, and nothing has been done.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace kxjob::command
