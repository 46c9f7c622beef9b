#pragma once

#include <string>

namespace kxjob::testing_support {

/// Prints "proof: what: count (least least)"; fails the test when the count falls short.
void Prove(const std::string& what, int count, int least);

/// Writes `text` to the file `name`.md in the folder that KXJOB_PROOF names; nothing without the variable.
void WriteProof(const std::string& name, const std::string& text);

}  // namespace kxjob::testing_support
