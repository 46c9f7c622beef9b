#pragma once

#include <cstdint>
#include <exception>
#include <string>

#include "kxjob/export.h"

namespace kxjob {

/// Base of the object-defined error numbers: an error of the library is this plus 743 to 752, 854, 855, 1312,
/// 1433.
inline constexpr std::uint32_t kObjectErrorBase = 0x80040000U;

/// The error numbers that do not belong to one method of the library.
namespace error_number {
inline constexpr std::int32_t kGuardRefusal = static_cast<std::int32_t>(kObjectErrorBase + 701);
inline constexpr std::int32_t kNoRow = static_cast<std::int32_t>(kObjectErrorBase + 702);
/// The description starts with the SQLSTATE in brackets.
inline constexpr std::int32_t kStatementFailed = static_cast<std::int32_t>(kObjectErrorBase + 703);
inline constexpr std::int32_t kConnectionFailed = static_cast<std::int32_t>(kObjectErrorBase + 704);
inline constexpr std::int32_t kUnknownScript = static_cast<std::int32_t>(kObjectErrorBase + 705);
/// A text that no store can keep: it holds NUL, invalid UTF-8 or a lone surrogate.
inline constexpr std::int32_t kUnstorableText = static_cast<std::int32_t>(kObjectErrorBase + 706);
inline constexpr std::int32_t kClassNotRegistered = static_cast<std::int32_t>(0x800401F3U);
inline constexpr std::int32_t kUnknownMember = static_cast<std::int32_t>(0x80020003U);
inline constexpr std::int32_t kWrongArgumentCount = static_cast<std::int32_t>(0x8002000EU);
inline constexpr std::int32_t kInvalidCall = static_cast<std::int32_t>(0x800A0005U);
inline constexpr std::int32_t kOverflow = static_cast<std::int32_t>(0x800A0006U);
inline constexpr std::int32_t kOutOfMemory = static_cast<std::int32_t>(0x800A0007U);
inline constexpr std::int32_t kSubscriptOutOfRange = static_cast<std::int32_t>(0x800A0009U);
inline constexpr std::int32_t kTypeMismatch = static_cast<std::int32_t>(0x800A000DU);
inline constexpr std::int32_t kInternal = static_cast<std::int32_t>(0x800A0033U);
inline constexpr std::int32_t kObjectNotSet = static_cast<std::int32_t>(0x800A005BU);
inline constexpr std::int32_t kInvalidUseOfNull = static_cast<std::int32_t>(0x800A005EU);
inline constexpr std::int32_t kDuplicateKey = static_cast<std::int32_t>(0x800A01C9U);
}  // namespace error_number

/// The one kind of failure that leaves the library: a 32-bit number, who raised it, and a description for
/// people.
class KXJOB_EXPORT AutomationError : public std::exception {
public:
    AutomationError(std::int32_t number, std::string source, std::string description, std::int32_t line = 0);

    std::int32_t Number() const noexcept { return number_; }
    const std::string& Source() const noexcept { return source_; }
    const std::string& Description() const noexcept { return description_; }
    /// The line of the statement that failed inside the library; 0 when it is not known.
    std::int32_t Line() const noexcept { return line_; }

    /// The description, UTF-8.
    const char* what() const noexcept override { return description_.c_str(); }

private:
    std::int32_t number_;
    std::string source_;
    std::string description_;
    std::int32_t line_;
};

}  // namespace kxjob
