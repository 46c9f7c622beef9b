#pragma once

namespace kxjob::bench {

/// GetNextJob among N QUEUED or RUNNING jobs, "next/ENGINE/N STATE", and asked by a hundred threads at once,
/// "next/ENGINE/100 callers", each beside the same statements by the bare driver.
void RegisterScheduling();

}  // namespace kxjob::bench
