#pragma once

#include <cstdint>

#include "kxjob/automation_error.h"

namespace kxjob::testing_support {

// The published numbers, written out: a test does not take them from the code under test.
inline constexpr auto kNoRow = static_cast<std::int32_t>(0x80040000U + 702);
inline constexpr auto kStatementFailed = static_cast<std::int32_t>(0x80040000U + 703);
inline constexpr auto kConnectionFailed = static_cast<std::int32_t>(0x80040000U + 704);
inline constexpr auto kUnknownScript = static_cast<std::int32_t>(0x80040000U + 705);
inline constexpr auto kUnstorableText = static_cast<std::int32_t>(0x80040000U + 706);
inline constexpr auto kLockTaken = static_cast<std::int32_t>(0x80040000U + 746);
inline constexpr auto kUnknownMember = static_cast<std::int32_t>(0x80020003U);
inline constexpr auto kWrongArgumentCount = static_cast<std::int32_t>(0x8002000EU);
inline constexpr auto kInvalidCall = static_cast<std::int32_t>(0x800A0005U);
inline constexpr auto kOverflow = static_cast<std::int32_t>(0x800A0006U);
inline constexpr auto kSubscriptOutOfRange = static_cast<std::int32_t>(0x800A0009U);
inline constexpr auto kTypeMismatch = static_cast<std::int32_t>(0x800A000DU);
inline constexpr auto kObjectNotSet = static_cast<std::int32_t>(0x800A005BU);
inline constexpr auto kInvalidUseOfNull = static_cast<std::int32_t>(0x800A005EU);
inline constexpr auto kDuplicateKey = static_cast<std::int32_t>(0x800A01C9U);

// What collaborators raise in tests.
inline const AutomationError kFailure(-88, "A collaborator", "it failed");
inline const AutomationError kRefusal(-77, "The guard", "not this text");
inline const AutomationError kStatementFailure(-88, "The store", "the statement failed");
inline const AutomationError kRaised(-1234, "Elsewhere_83.Class", "it did not work");

}  // namespace kxjob::testing_support
