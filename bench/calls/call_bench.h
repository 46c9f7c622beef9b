#pragma once

namespace kxjob::bench {

/// One call of each method beside the statements that it sends, on every engine: "call/ENGINE/METHOD".
/// Counter `statements`: how many these are.
void RegisterCalls();

}  // namespace kxjob::bench
