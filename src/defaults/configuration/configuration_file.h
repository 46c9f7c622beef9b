#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kxjob {

/// Where a configuration file may be, the first place first, in UTF-8. A file that `KXJOB_CONFIG` names is
/// the only place.
std::vector<std::string> ConfigurationPlaces();

/// The first of these files that is there.
std::optional<std::string> FirstFileAmong(const std::vector<std::string>& places);

/// The text of the first file among `places`; nothing when there is none. A file that is there but cannot be
/// read is not passed over: raises 0x80040000 + 704.
std::optional<std::string> FirstTextAmong(const std::vector<std::string>& places);

/// The text of the configuration file; nothing when there is none in the usual places. Raises 0x80040000 +
/// 704 when the file that `KXJOB_CONFIG` names is missing.
std::optional<std::string> ConfigurationText();

}  // namespace kxjob
