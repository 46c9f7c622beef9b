#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace kxjob::testing_support {

/// The description that an error has behind the innermost `frames` of the running methods (`running`, the
/// innermost first): as it was raised by `step` ("DataAccess.Query"), and with a sentence in front of it
/// where the sweep of irrelevant jobs explains what it was doing.
std::string DescriptionBehind(const std::vector<std::string>& running, std::size_t frames,
                              const std::string& step, std::string description);

}  // namespace kxjob::testing_support
