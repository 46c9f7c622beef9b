#pragma once

#include "insight/doctor/finding.h"
#include "kxjob/store.h"

namespace kxjob::command {

/// How far the clocks of the store and of this machine are apart: claims and times come from both.
void CheckClock(Store& store, Findings& findings);

/// The same for the seconds by which the store is ahead of this machine.
Finding ClockFinding(double difference);

}  // namespace kxjob::command
