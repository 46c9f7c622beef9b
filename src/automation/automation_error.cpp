#include "kxjob/automation_error.h"

#include <utility>

namespace kxjob {

AutomationError::AutomationError(std::int32_t number, std::string source, std::string description,
                                 std::int32_t line)
    : number_(number), source_(std::move(source)), description_(std::move(description)), line_(line) {}

}  // namespace kxjob
