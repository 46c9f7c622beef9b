#include "demo/demo_worker.h"

#include <sys/types.h>
#include <unistd.h>

#include <array>
#include <optional>

#include "kxjob/automation_error.h"
#include "kxjob/caller_texts.h"
#include "kxjob/component_registry.h"
#include "kxjob/job_helper.h"
#include "kxjob/store.h"

namespace kxjob::command {
namespace {

std::string MachineName() {
    std::array<char, 256> name{};
    gethostname(name.data(), name.size() - 1);
    return name.data();
}

std::string UserName() {
    const char* const name = getlogin();
    return name == nullptr ? std::to_string(getuid()) : name;
}

/// One thread's work on one job.
class Worker {
public:
    Worker(StoreConnection connection, std::string jobGuid, const std::string& progId)
        : connection_(std::move(connection)),
          jobGuid_(std::move(jobGuid)),
          component_(CreateComponent(progId)) {}

    void Register(const std::string& description) {
        task_ = helper_.RegisterJobTask(connection_.connectionString, connection_.nameQualifier, description,
                                        jobGuid_, UserName(), MachineName(), getpid(), gettid());
    }
    void Unregister(bool succeeded) {
        helper_.UnRegisterJobTaskIndicatingStatus(connection_.connectionString, connection_.nameQualifier,
                                                  task_, succeeded);
    }
    void Do(const DemoItem& item, JobProgress& progress);

private:
    void SetState(const DemoItem& item, const char* state, const std::string& start, const std::string& end) {
        helper_.UpdateJobItemStatus(connection_.connectionString, connection_.provider,
                                    connection_.nameQualifier, item.guid, state, start, end, task_);
    }
    void KeepDigest(const DemoItem& item, const std::string& digest) const {
        Store store(connection_.connectionString, connection_.provider, connection_.nameQualifier);
        store.Execute("UPDATE " + store.Table("JobItem") + " SET data = " + store.Literal(digest) +
                      " WHERE jobitemguid = " + store.Literal(item.guid));
    }

    StoreConnection connection_;
    std::string jobGuid_;
    ComponentRef component_;
    JobHelper helper_;
    std::string task_;
};

void Worker::Do(const DemoItem& item, JobProgress& progress) {
    const std::string start = NowISODateTime();
    SetState(item, "RUNNING", start, "");
    std::string digest;
    std::optional<std::string> failure;
    try {
        const std::array<Value, 7> arguments{connection_.connectionString,
                                             connection_.provider,
                                             connection_.nameQualifier,
                                             jobGuid_,
                                             item.guid,
                                             item.identifier,
                                             ""};
        digest = component_->Call("RunJobItem", arguments).ToText();
    } catch (const AutomationError& error) {
        failure = error.Description();
    }
    const bool succeeded = !failure.has_value();
    if (succeeded) {
        KeepDigest(item, digest);
    } else {
        helper_.AppendJobItemFailureNote(connection_.connectionString, connection_.provider,
                                         connection_.nameQualifier, item.guid, *failure);
    }
    const std::string end = NowISODateTime();
    SetState(item, succeeded ? "COMPLETE" : "FAILED", start, end);
    helper_.UpdateTaskRegistration(connection_.connectionString, connection_.nameQualifier, task_, item.guid,
                                   "");
    progress.ItemEnded(succeeded, end);
}

}  // namespace

const DemoItem* DemoItems::Take() {
    const std::size_t place = next_++;
    return place < items_.size() ? &items_[place] : nullptr;
}

void WorkAsTask(const StoreConnection& connection, const std::string& jobGuid, const std::string& progId,
                const std::string& description, DemoItems& items, JobProgress& progress) {
    Worker worker(connection, jobGuid, progId);
    worker.Register(description);
    try {
        while (const DemoItem* item = items.Take()) worker.Do(*item, progress);
    } catch (const AutomationError&) {
        worker.Unregister(false);
        throw;
    }
    worker.Unregister(true);
}

}  // namespace kxjob::command
