#include "work/host/worker.h"

#include <chrono>
#include <exception>

#include "kxjob/caller_texts.h"
#include "kxjob/component_registry.h"
#include "work/host/item_runner.h"
#include "work/protocol/job_course.h"

namespace kxjob::command {
namespace {

using Clock = std::chrono::steady_clock;

constexpr double kMissingComponentPause = 60;
constexpr std::chrono::seconds kOldestResult{1};

double SecondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

}  // namespace

Worker::Worker(HostContext& host, int number)
    : host_(host), description_("kxjob work, thread " + std::to_string(number)), store_(host.options.store) {}

void Worker::Run() {
    while (!host_.state.Stopping() && !isToldToStop_) {
        Choosing choosing(host_.choosing, std::defer_lock);
        const std::optional<WorkableJob> job = NextJob(choosing);
        if (!job) return;
        Work(*job, choosing);
    }
}

std::optional<WorkableJob> Worker::NextJob(Choosing& choosing) {
    while (!host_.state.Stopping()) {
        choosing.lock();
        const WantedJobs wanted{host_.options.type, host_.options.once ? host_.jobs.First() : std::string(),
                                [this](const std::string& job) { return host_.jobs.IsAvoided(job); }};
        JobChoice choice = host_.watch.Through([&] { return ChooseJob(store_, wanted); });
        if (choice.job) return choice.job;
        choosing.unlock();
        const bool isOver = host_.options.untilEmpty || !wanted.only.empty();
        if (isOver && !choice.anythingLeft) return std::nullopt;
        host_.state.Pause(host_.options.pollSeconds);
    }
    return std::nullopt;
}

void Worker::Work(const WorkableJob& job, Choosing& choosing) {
    const std::string lock = NewGuid();
    const JobStart start = host_.watch.Through([&] { return StartJob(store_, job.guid, lock); });
    if (start == JobStart::NotToBeWorked) return;
    if (start == JobStart::ByThisCall) host_.report.JobStarted(job.guid);
    host_.jobs.Begin(job.guid);
    const double lease = host_.options.leaseSeconds;
    const std::string task =
        host_.watch.Through([&] { return RegisterTask(store_, job.guid, description_, lease); });
    task_ = std::make_shared<ActiveTask>();
    task_->name = {job.guid, task};
    host_.tasks.Add(task_);
    const ComponentRef component = CreateComponentOf(job);
    if (component == nullptr) {
        host_.watch.Through([&] { CloseTask(store_, task_->name, false); });
    } else {
        host_.report.ThreadsAtWork(1);
        const std::optional<SequenceRange> held = WorkLots(*component, choosing);
        host_.report.ThreadsAtWork(-1);
        EndTask(job, held);
    }
    host_.tasks.Remove(task_);
    task_ = nullptr;
}

ComponentRef Worker::CreateComponentOf(const WorkableJob& job) {
    try {
        return CreateComponent(job.progId);
    } catch (const std::exception& error) {
        host_.report.ComponentMissing(job.guid, error.what());
        host_.jobs.Avoid(job.guid, kMissingComponentPause);
        return nullptr;
    }
}

std::optional<SequenceRange> Worker::WorkLots(Component& component, Choosing& choosing) {
    ItemLots lots(store_, task_->name);
    LotSize size(host_.options.mostInALot);
    while (GoesOn()) {
        const Clock::time_point start = Clock::now();
        const std::vector<ClaimedItem> items = Claim(lots, size.Now());
        if (choosing.owns_lock()) choosing.unlock();
        if (items.empty()) break;
        WorkLot(items, component);
        size.Took(SecondsSince(start));
    }
    return lots.Whereabouts();
}

/// After a claim whose end was not seen, what the task holds is what that claim got.
std::vector<ClaimedItem> Worker::Claim(ItemLots& lots, std::size_t most) {
    bool isFirstTry = true;
    return host_.watch.Through([&] {
        const std::lock_guard turn(host_.turn);
        std::vector<ClaimedItem> held;
        if (!isFirstTry) held = lots.Held();
        isFirstTry = false;
        return held.empty() ? lots.Claim(most) : held;
    });
}

void Worker::WorkLot(const std::vector<ClaimedItem>& items, Component& component) {
    Clock::time_point lastWrite = Clock::now();
    for (const ClaimedItem& item : items) {
        if (!GoesOn()) break;
        ItemResult result = RunItem(store_, component, task_->name.job, item);
        task_->results.Add(std::move(result), host_.jobs.SquaredIncrement(task_->name.job));
        if (Clock::now() - lastWrite < kOldestResult) continue;
        WriteResults();
        lastWrite = Clock::now();
    }
    WriteResults();
}

void Worker::WriteResults() {
    if (task_->isLost) return;
    const FinishedItems finished = host_.watch.Through([&] {
        const std::lock_guard turn(host_.turn);
        return task_->results.Write(store_, task_->name);
    });
    host_.report.ItemsFinished(finished.succeeded, finished.failed);
}

/// The job is ended while the task still runs: the lock that it takes for this has a living holder.
void Worker::EndTask(const WorkableJob& job, const std::optional<SequenceRange>& held) {
    if (task_->isLost) return host_.report.TaskLost(task_->name.task);
    JobEnd end = JobEnd::NotYet;
    if (GoesOn()) {
        end = host_.watch.Through([&] { return EndJob(store_, task_->name, host_.options.leaseSeconds); });
    }
    host_.watch.Through([&] { CloseTask(store_, task_->name, true, held); });
    isToldToStop_ = task_->isToldToStop;
    if (end == JobEnd::ByOthers) host_.jobs.Avoid(job.guid, host_.options.pollSeconds);
    if (end == JobEnd::ByThisCall) TellOfEnd(job);
}

void Worker::TellOfEnd(const WorkableJob& job) {
    host_.report.JobEnded(job.guid);
    host_.state.Wake();
    if (job.notificationProgId.empty()) return;
    const std::string problem = TellJobFinished(store_, job.guid, job.notificationProgId);
    if (!problem.empty()) host_.watch.Through([&] { NoteOnJob(store_, job.guid, problem); });
}

void Worker::GiveUp() noexcept {
    if (task_ == nullptr) return;
    try {
        CloseTask(store_, task_->name, false);
    } catch (const std::exception&) {
        return;  // its claim runs out
    }
}

bool Worker::GoesOn() const {
    return !host_.state.Stopping() && !task_->isLost && !task_->isToldToStop;
}

}  // namespace kxjob::command
