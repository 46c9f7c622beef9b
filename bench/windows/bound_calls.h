#pragma once

#include <kxJob.h>

#include <functional>
#include <string>

#include "com/handles/com_pointer.h"
#include "kxjob/job_helper.h"

namespace kxjob::bench {

/// The same call on three roads.
struct BoundCall {
    std::string name;
    std::function<void()> native;  // the library is part of the program
    std::function<void()> early;   // by the interface of the registered server
    std::function<void()> late;    // by name, as a script asks: GetIDsOfNames and Invoke
};

/// The registered server's object.
class ServerObject {
public:
    ServerObject();
    _JobHelper& Early() const { return *early_.Get(); }
    IDispatch& Late() const { return *late_.Get(); }

private:
    ComPointer<IDispatch> late_;
    ComPointer<_JobHelper> early_;
};

/// A call that does next to nothing: what is left is the road.
BoundCall IsJobCompleteCall(JobHelper& helper, const ServerObject& server);
/// One that sends a statement.
BoundCall UpdateJobTaskLockCall(JobHelper& helper, const ServerObject& server, const std::string& connection,
                                const std::string& qualifier);

}  // namespace kxjob::bench
