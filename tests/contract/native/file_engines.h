#pragma once

#include "contract/contract_engine.h"

namespace kxjob::testing_support {

/// The engine that is linked in.
ContractEngine SqliteFile();

}  // namespace kxjob::testing_support
