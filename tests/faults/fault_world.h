#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "composition/counting_collaborators.h"
#include "contract/contract_engine.h"
#include "defaults/configuration/environment_variable.h"
#include "defaults/store/session.h"
#include "faults/fault_case.h"
#include "faults/fault_sink.h"
#include "faults/store_picture.h"
#include "files/temporary_folder.h"

namespace kxjob::testing_support {

/// A COMPLETE job in the production state, which no sweep may touch.
inline constexpr const char* kStayingJobGuid = "{00000000-0000-4000-8000-00000000A009}";

/// All that is seen of one call.
struct FaultRun {
    std::vector<JournalEvent> events;
    std::optional<AutomationError> raised;
    /// Objects alive: when the outermost method told its error, after the call, and after the instance.
    int aliveWhenTold = 0;
    int aliveAfterCall = 0;
    int aliveAtEnd = 0;
};

/// A seeded store with a job that stays and orphans, and this thread's collaborators, counted and recorded.
class FaultWorld {
public:
    explicit FaultWorld(const ContractEngine& engine);
    FaultWorld(const FaultWorld&) = delete;
    FaultWorld& operator=(const FaultWorld&) = delete;
    ~FaultWorld();

    /// Puts the rows back, and readies them for a case.
    void Restore(const FaultCase& given);
    /// Runs statements as the published writes say, on a session of its own.
    void Apply(const Write& write) { own_->RunBatch(write); }
    StorePicture Picture() { return PictureOf(*own_); }

    /// Calls, on a new instance. `act` comes before each call of a collaborator.
    FaultRun Perform(const FaultCase& given, const FaultSink::Act& act);
    /// Empty, or what is wrong with a simple call now.
    std::string WhatIsWrongWithTheNextCall();

    const std::string& ConnectionString() const { return connectionString_; }
    const ContractEngine& Engine() const { return engine_; }
    /// A session that the library does not use.
    Session& Own() { return *own_; }
    /// The id of the library's session.
    std::string LibrarySession();

private:
    ContractEngine engine_;
    TemporaryFolder folder_;
    EnvironmentVariable configuration_;
    std::unique_ptr<ContractStore> store_;
    std::string connectionString_;
    std::shared_ptr<Census> census_ = std::make_shared<Census>();
    FaultSink sink_;
    std::vector<std::string> seeds_;
    std::unique_ptr<Session> own_;
};

}  // namespace kxjob::testing_support
