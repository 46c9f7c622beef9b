#pragma once

#include <string>
#include <vector>

#include "defaults/store/session.h"

namespace kxjob::testing_support {

/// The rows of the four job tables and of the history, one text a row, sorted. What is drawn anew stands in
/// it as in published_writes.h.
using StorePicture = std::vector<std::string>;

StorePicture PictureOf(Session& session);

/// The rows that only one of the two has; empty when they are equal.
std::string DifferenceOf(const StorePicture& expected, const StorePicture& found);

}  // namespace kxjob::testing_support
