#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "kxjob/automation_error.h"
#include "kxjob/export.h"
#include "kxjob/value.h"

namespace kxjob {

/// One thing that happened inside the library, with passwords replaced by "***".
struct JournalEvent {
    enum class Kind {
        Enter,  // a method, public or private, begins
        Call,   // a collaborator or component has been called
        Leave,  // a method ends without an error
        Raise,  // a method ends with an error
    };

    Kind kind = Kind::Enter;
    /// The running method.
    std::string method;
    /// The line of the statement that made the call; 0 for the other kinds.
    std::int32_t line = 0;
    /// Call: who was called, and what for.
    std::string object;
    std::string operation;
    /// Call: the arguments in their order.
    std::vector<Value> arguments;
    /// Enter: every argument under its published name. Leave: those by reference, as they are now.
    std::vector<std::pair<std::string, Value>> named;
    /// Call and Leave: what came back; none when there is no result.
    std::optional<Value> result;
    /// Call and Raise: the error.
    std::optional<AutomationError> error;
};

/// Takes the events of one thread, in the order in which things happen.
class KXJOB_EXPORT JournalSink {
public:
    virtual ~JournalSink();
    virtual void Write(const JournalEvent& event) = 0;
    /// Comes before a collaborator is called, with neither result nor error; what it raises is raised in
    /// place of the call, and written as its error. Tests fail calls this way.
    virtual void BeforeCall(const JournalEvent& call);
};

/// While it lives, all that the library does on the thread that made it is written to a sink. The thread's
/// collaborators are set up anew when it begins and when it ends.
class KXJOB_EXPORT CallJournal {
public:
    explicit CallJournal(JournalSink& sink);
    CallJournal(const CallJournal&) = delete;
    CallJournal& operator=(const CallJournal&) = delete;
    ~CallJournal();
};

/// The error that an error object (the first argument of LogAndReRaiseVBError) holds; none for any other
/// value.
KXJOB_EXPORT std::optional<AutomationError> HeldError(const Value& value);

}  // namespace kxjob
