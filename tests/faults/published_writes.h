#pragma once

#include <string>
#include <vector>

namespace kxjob::testing_support {

/// What one call of a collaborator writes, as statements on the tables of the qualifier "kx_"; all of them or
/// none.
using Write = std::vector<std::string>;

/// What a method writes when it is called as in every_method.h on the store of a FaultWorld, in the published
/// order; nothing for a method that only reads. What is drawn anew stands as "{new}", the time as "{now}",
/// and the lines ahead of a failure note as "{circumstances}".
std::vector<Write> PublishedWrites(const std::string& method);

/// The writes of CreateSimpleJobItems for so many identifiers "0", "1", "2": groups of 100.
std::vector<Write> WritesOfSimpleItems(int identifiers);

}  // namespace kxjob::testing_support
