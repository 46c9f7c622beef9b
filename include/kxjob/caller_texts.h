#pragma once

#include <string>

#include "kxjob/export.h"

namespace kxjob {

/// A new GUID, "{8-4-4-4-12}" in upper case: the key that CreateJob wants from its caller.
KXJOB_EXPORT std::string NewGuid();

/// The time now as the library writes it, UTC: "2026-03-01T09:30:15.123Z".
KXJOB_EXPORT std::string NowISODateTime();

/// A failure note as AppendJobItemFailureNote would leave it: `oldNote` unless it is blank, then when and by
/// whom, then `additionalNote`. For callers that store it together with other changes.
KXJOB_EXPORT std::string FailureNote(const std::string& oldNote, const std::string& additionalNote);

}  // namespace kxjob
