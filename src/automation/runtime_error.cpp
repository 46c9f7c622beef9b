#include "automation/runtime_error.h"

#include <string>

#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

std::string Description(std::int32_t number) {
    switch (number) {
        case error_number::kClassNotRegistered: return "Class not registered";
        case error_number::kUnknownMember: return "Member not found";
        case error_number::kWrongArgumentCount: return "Wrong number of arguments";
        case error_number::kInvalidCall: return "Invalid procedure call or argument";
        case error_number::kOverflow: return "Overflow";
        case error_number::kOutOfMemory: return "Out of memory";
        case error_number::kSubscriptOutOfRange: return "Subscript out of range";
        case error_number::kTypeMismatch: return "Type mismatch";
        case error_number::kObjectNotSet: return "Object not set";
        case error_number::kInvalidUseOfNull: return "Invalid use of Null";
        case error_number::kDuplicateKey: return "This key is already in the collection";
        default: return "Internal error";
    }
}

}  // namespace

void RaiseRuntimeError(std::int32_t number) {
    throw AutomationError(number, "Job_83", Description(number));
}

void RaiseRuntimeError(std::int32_t number, std::string_view detail) {
    throw AutomationError(number, "Job_83", Description(number) + ": " + std::string(detail));
}

}  // namespace kxjob
