#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "work/host/host_context.h"
#include "work/host/lot_size.h"
#include "work/protocol/item_lots.h"
#include "work/protocol/job_choice.h"

namespace kxjob::command {

/// One thread of a host: takes a job, registers a task, works lots of its items until none is left, ends the
/// task, and takes the next job.
class Worker {
public:
    Worker(HostContext& host, int number);

    /// Until the host stops, a command tells this worker to, or there is nothing more to wait for.
    void Run();
    /// After Run has raised: ends the task that it left, if that is still possible.
    void GiveUp() noexcept;

private:
    using Choosing = std::unique_lock<std::mutex>;

    /// None: this worker is to end.
    std::optional<WorkableJob> NextJob(Choosing& choosing);
    void Work(const WorkableJob& job, Choosing& choosing);
    /// Null, after a report, when the component cannot be created.
    ComponentRef CreateComponentOf(const WorkableJob& job);
    /// Gives back where the items are that the task may still hold.
    std::optional<SequenceRange> WorkLots(Component& component, Choosing& choosing);
    void WorkLot(const std::vector<ClaimedItem>& items, Component& component);
    std::vector<ClaimedItem> Claim(ItemLots& lots, std::size_t most);
    void WriteResults();
    void EndTask(const WorkableJob& job, const std::optional<SequenceRange>& held);
    void TellOfEnd(const WorkableJob& job);
    bool GoesOn() const;

    HostContext& host_;
    std::string description_;
    JobStore store_;
    std::shared_ptr<ActiveTask> task_;
    bool isToldToStop_ = false;
};

}  // namespace kxjob::command
