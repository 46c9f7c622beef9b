#pragma once

#include <memory>
#include <string>

#include "contract/contract_engine.h"
#include "defaults/store/session.h"

namespace kxjob::testing_support {

/// A store with the seeded rows among those of 2,000 other jobs with 24,000 items and 4,000 tasks, and with
/// the engine's statistics of them: what a planner needs to choose as it would in earnest. Qualifier "kx_".
class CrowdedStore {
public:
    explicit CrowdedStore(const ContractEngine& engine);

    Session& Own() { return *session_; }

    /// A statement with values that rows of this store have where the recorded ones would let an engine see
    /// that there is nothing to find, and plan no further.
    static std::string Fitting(std::string sql);

private:
    std::unique_ptr<ContractStore> store_;
    std::unique_ptr<Session> session_;
};

}  // namespace kxjob::testing_support
