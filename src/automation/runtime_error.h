#pragma once

#include <cstdint>
#include <string_view>

namespace kxjob {

/// Raises one of the errors that belong to the automation runtime rather than to a method ("Overflow", "Type
/// mismatch" ...): `number` is of `error_number`, the source is "Job_83", the description is the number's
/// own.
[[noreturn]] void RaiseRuntimeError(std::int32_t number);
/// The same with ": " and what it was about behind the description.
[[noreturn]] void RaiseRuntimeError(std::int32_t number, std::string_view detail);

}  // namespace kxjob
