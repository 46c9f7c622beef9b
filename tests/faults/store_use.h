#pragma once

#include "kxjob/call_journal.h"

namespace kxjob::testing_support {

enum class StoreUse { None, Reads, Writes };

/// Tells of each call in turn what it does to the store.
class StoreUses {
public:
    StoreUse Of(const JournalEvent& call);

private:
    int added_ = 0;
};

}  // namespace kxjob::testing_support
