#pragma once

namespace kxjob::bench {

/// CreateSimpleJobItems for many items, "bulk/ENGINE/N items, prepared", beside a prepared INSERT in batches
/// as large as the library's, and "bulk/ENGINE/N items, fastest", beside the fastest road that the engine
/// has.
void RegisterBulk();

}  // namespace kxjob::bench
