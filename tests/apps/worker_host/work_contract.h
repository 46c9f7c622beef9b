#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "contract/contract_engine.h"
#include "defaults/configuration/environment_variable.h"
#include "files/temporary_folder.h"
#include "work/protocol/job_store.h"
#include "work/protocol/task_claims.h"

namespace kxjob::testing_support {

/// A store of each engine with the tables of the qualifier "kx_", and jobs to work on.
class WorkContract : public testing::TestWithParam<ContractEngine> {
protected:
    void SetUp() override;
    /// Closes this thread's connections.
    void TearDown() override;

    /// Adds the job type with this component to the store.
    void AddType(const std::string& type, const std::string& progId, const std::string& notification = "");
    /// A job of the type in a state, with items that have these sequence numbers; gives its GUID.
    std::string MakeJob(const std::string& type, const std::string& state,
                        const std::vector<std::int64_t>& sequences);
    /// The same with the numbers from 0 on.
    std::string MakeJob(const std::string& type, const std::string& state, int items);
    void SetState(const std::string& job, const std::string& state);
    /// Registers a task for the job whose claim holds for a minute.
    command::TaskName NewTask(const std::string& job);
    /// Lets the claim of a task have run out long ago.
    void LetExpire(const command::TaskName& name);

    Value Cell(const std::string& sql) { return store_->Cell(sql); }
    /// How many items of the job are at that state; of none for "".
    Value ItemsAt(const std::string& job, const std::string& state);
    Value JobCell(const std::string& job, const std::string& column);
    Value TaskState(const command::TaskName& name);

    TemporaryFolder folder_;
    EnvironmentVariable configuration_{"KXJOB_CONFIG", folder_.File("kxjob.conf")};
    std::unique_ptr<ContractStore> database_;
    StoreConnection connection_;
    std::unique_ptr<command::JobStore> store_;
};

}  // namespace kxjob::testing_support
