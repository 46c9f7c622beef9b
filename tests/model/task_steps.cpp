#include "model/steps.h"

namespace kxjob::model {
namespace {

Step RegisterJobTask(Draw& draw, const Tables& tables) {
    const Address at = draw.Place();
    const Value description = draw.Variant();
    const std::string job = draw.JobGuid(tables);
    const Value user = draw.Variant();
    const Value machine = draw.Variant();
    const std::int32_t process = draw.Number();
    const std::int32_t thread = draw.Number();
    return {
        .name = "RegisterJobTask",
        .call = [=](JobHelper& jobs, Store&) -> Value {
            return jobs.RegisterJobTask(at.connection, at.qualifier, description, job, user, machine, process,
                                        thread);
        },
        .effect = [=](Tables& changed) -> Result {
            CheckQualifier(at.qualifier);
            CheckKey(job);
            Row row{{"jobtaskguid", NewGuid{1}}, {"startdt", Now{}}, {"jobtaskstateid", Value("RUNNING")}};
            row["description"] = AsStoredText(description);
            row["jobguid"] = AsStoredText(job);
            row["usercontext"] = AsStoredText(user);
            row["machine"] = AsStoredText(machine);
            row["processid"] = Value(process);
            row["threadid"] = Value(thread);
            at.CheckReachable();
            at.CheckShort(machine);
            changed.jobTask.Insert(row);
            return NewGuid{1};
        }};
}

void CloseTask(Tables& changed, const Address& at, const std::string& task, const char* state) {
    CheckKey(task);
    CheckQualifier(at.qualifier);
    CheckStorable(task);
    at.CheckReachable();
    changed.jobTask.ForEach("jobtaskguid", task, [&](Row& row) {
        row["jobtaskstateid"] = Value(state);
        row["enddt"] = Now{};
    });
}

Step UnRegisterJobTask(Draw& draw, const Tables& tables) {
    const Address at = draw.Place();
    const std::string task = draw.TaskGuid(tables);
    return {.name = "UnRegisterJobTask",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                jobs.UnRegisterJobTask(at.connection, at.qualifier, task);
                return {};
            },
            .effect = [=](Tables& changed) -> Result {
                CloseTask(changed, at, task, "COMPLETE");
                return {};
            }};
}

Step UnRegisterJobTaskIndicatingStatus(Draw& draw, const Tables& tables) {
    const Address at = draw.Place();
    const std::string task = draw.TaskGuid(tables);
    const bool succeeded = draw.Truth();
    return {.name = "UnRegisterJobTaskIndicatingStatus",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                jobs.UnRegisterJobTaskIndicatingStatus(at.connection, at.qualifier, task, succeeded);
                return {};
            },
            .effect = [=](Tables& changed) -> Result {
                CloseTask(changed, at, task, succeeded ? "COMPLETE" : "FAILED");
                return {};
            }};
}

Step UpdateTaskRegistration(Draw& draw, const Tables& tables) {
    const Address at = draw.Place();
    const std::string task = draw.TaskGuid(tables);
    const std::string lastItem = draw.Text();
    const std::string state = draw.State();
    return {.name = "UpdateTaskRegistration",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                jobs.UpdateTaskRegistration(at.connection, at.qualifier, task, lastItem, state);
                return {};
            },
            .effect = [=](Tables& changed) -> Result {
                CheckQualifier(at.qualifier);
                CheckKey(task);
                CheckStorable(lastItem);
                CheckStorable(state);
                if (lastItem.empty() && state.empty()) RaiseOwn(747);
                CheckStorable(task);
                at.CheckReachable();
                changed.jobTask.ForEach("jobtaskguid", task, [&](Row& row) {
                    if (!lastItem.empty()) row["lastjobitem"] = Value(lastItem);
                    if (!state.empty()) row["jobtaskstateid"] = Value(state);
                });
                return {};
            }};
}

Step UpdateJobTaskLock(Draw& draw, const Tables& tables) {
    const Address at = draw.Place();
    const std::string task = draw.TaskGuid(tables);
    const std::string lock = draw.LockGuid(tables, "");
    return {.name = "UpdateJobTaskLock",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                jobs.UpdateJobTaskLock(at.connection, at.qualifier, task, lock);
                return {};
            },
            .effect = [=](Tables& changed) -> Result {
                CheckQualifier(at.qualifier);
                CheckKey(task);
                CheckStorable(lock);
                CheckStorable(task);
                at.CheckReachable();
                changed.jobTask.ForEach("jobtaskguid", task,
                                        [&](Row& row) { row["lockguid"] = Value(lock); });
                return {};
            }};
}

Step UpdateTaskCommand(Draw& draw, const Tables& tables) {
    const Address at = draw.Place();
    const std::string task = draw.TaskGuid(tables);
    const std::string command = draw.Text();
    return {.name = "UpdateTaskCommand",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                jobs.UpdateTaskCommand(at.connection, at.qualifier, task, command);
                return {};
            },
            .effect = [=](Tables& changed) -> Result {
                CheckQualifier(at.qualifier);  // the task's GUID is not checked here
                CheckStorable(command);
                CheckStorable(task);
                at.CheckReachable();
                changed.jobTask.ForEach("jobtaskguid", task,
                                        [&](Row& row) { row["command"] = Value(command); });
                return {};
            }};
}

Step GetNewLockExcludingInterlopers(Draw& draw, const Tables& tables) {
    const Address at = draw.Place();
    const std::string job = draw.JobGuid(tables);
    const std::string task = draw.TaskGuid(tables);
    const std::string oldLock = draw.LockGuid(tables, job);
    const double duration = draw.Duration();
    return {.name = "GetNewLockExcludingInterlopers",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                return jobs.GetNewLockExcludingInterlopers(at.connection, at.qualifier, job, task, oldLock,
                                                           duration);
            },
            .effect = [=](Tables& changed) -> Result {
                CheckKey(job);
                CheckKey(task);
                CheckKey(oldLock);
                CheckQualifier(at.qualifier);
                CheckStorable(job);
                CheckStorable(oldLock);
                at.CheckReachable();
                if (!changed.job.Has("jobguid", job)) RaiseOwn(745);
                bool isMigrated = false;
                changed.job.ForEach("jobguid", job, [&](Row& row) {
                    if (!Holds(row, "jobeditorlockguid", oldLock)) return;
                    row["jobeditorlockguid"] = NewGuid{1};
                    row["lockduration"] = Value(duration);
                    isMigrated = true;
                });
                if (!isMigrated) RaiseOwn(746);
                CheckStorable(task);
                changed.jobTask.ForEach("jobtaskguid", task, [](Row& row) { row["lockguid"] = NewGuid{1}; });
                return NewGuid{1};
            }};
}

}  // namespace

std::vector<StepKind> TaskSteps() {
    return {
        {"RegisterJobTask", 5, RegisterJobTask},
        {"UnRegisterJobTask", 2, UnRegisterJobTask},
        {"UnRegisterJobTaskIndicatingStatus", 2, UnRegisterJobTaskIndicatingStatus},
        {"UpdateTaskRegistration", 2, UpdateTaskRegistration},
        {"UpdateJobTaskLock", 2, UpdateJobTaskLock},
        {"UpdateTaskCommand", 2, UpdateTaskCommand},
        {"GetNewLockExcludingInterlopers", 6, GetNewLockExcludingInterlopers},
    };
}

}  // namespace kxjob::model
