#pragma once

#include <cstddef>
#include <string>

#include "insight/watch/item_pace.h"
#include "insight/watch/job_look.h"
#include "terminal/colour.h"
#include "value_json.h"

namespace kxjob::command {

/// "the job: RUNNING, 45 %, 450 of 1000 items, 3 failed, 20.0 items/s, 28 s left"
std::string PlainLine(const JobLook& look, const ItemPace& pace);

/// The same as a bar that takes up at most `width` columns.
std::string BarLine(const JobLook& look, const ItemPace& pace, std::size_t width, const Palette& palette);

/// {"time","job","description","state","totalItems","succeededItems","failedItems","itemsPerSecond",
/// "secondsLeft"}
Json LookJson(const std::string& time, const JobLook& look, const ItemPace& pace);

}  // namespace kxjob::command
