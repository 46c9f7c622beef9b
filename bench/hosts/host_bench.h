#pragma once

namespace kxjob::bench {

/// How many items that do nothing worker hosts execute: "host/ENGINE/N processes", beside two UPDATEs an item
/// by the bare driver, and "host/ENGINE/full container", beside an empty one.
void RegisterHosts();

}  // namespace kxjob::bench
