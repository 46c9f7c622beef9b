#pragma once

#include <string>

#include "work/protocol/task_claims.h"

namespace kxjob::command {

enum class JobStart {
    ByThisCall,     // QUEUED before, RUNNING now
    Already,        // RUNNING, whoever started it
    NotToBeWorked,  // any other state, or gone
};

/// Sets a QUEUED job RUNNING; of all that try, one does it, and writes the entry of the administration
/// history. `lock`, a new GUID, becomes the job's editor lock: it tells whose statement it was, also at a
/// second try.
JobStart StartJob(JobStore& store, const std::string& job, const std::string& lock);

enum class JobEnd {
    ByThisCall,  // RUNNING before, COMPLETE now
    ByOthers,    // nothing is left to do, but another is about to end the job, or has
    NotYet,      // it has unfinished items
};

/// Sets a RUNNING job that has no unfinished item COMPLETE; of all that try, one does it, and writes the
/// entry of the administration history. The task takes over the job's editor lock for this.
JobEnd EndJob(JobStore& store, const TaskName& name, double lockSeconds);

/// Tells the component `progId` that the job is finished. Gives back what it raised; empty when nothing.
std::string TellJobFinished(JobStore& store, const std::string& job, const std::string& progId);

/// Appends to a job's failure note; one that is gone is no error.
void NoteOnJob(JobStore& store, const std::string& job, const std::string& note);

}  // namespace kxjob::command
