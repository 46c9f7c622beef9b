#pragma once

namespace kxjob::bench {

/// What becomes of calls when there is much: "large/ENGINE/...", beside the same statements by the bare
/// driver.
void RegisterReading();
void RegisterRemoval();

}  // namespace kxjob::bench
