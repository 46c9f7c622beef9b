#pragma once

#include <mutex>

#include "work/host/active_tasks.h"
#include "work/host/host_state.h"
#include "work/host/job_board.h"
#include "work/host/store_watch.h"
#include "work/host/work_report.h"
#include "work/work_options.h"

namespace kxjob::command {

/// What the threads of one host share.
struct HostContext {
    WorkOptions options;
    WorkReport& report;
    HostState state = {};
    StoreWatch watch{state, report};
    ActiveTasks tasks = {};
    JobBoard jobs = {};
    /// One worker chooses a job and makes its first claim at a time: the next one sees what is left.
    std::mutex choosing = {};
    /// One thread claims or writes results at a time: more would only wait for each other in the store.
    std::mutex turn = {};
};

}  // namespace kxjob::command
