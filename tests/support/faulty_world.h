#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "collaborators/collaborator_factory.h"
#include "kxjob/automation_error.h"

namespace kxjob::testing_support {

/// What the error-logging component does with the error that it is handed.
enum class ErrorLogger { RaisesAgain, Returns, CannotBeCreated };

/// Which jobs the store of the faulty world holds: they take the choice of the next job down different roads.
enum class StoredJobs { QueuedAndRunning, RunningOnly };

/// One run in a world that works, but for the one step that fails. A step is each operation of a
/// collaborator, each member of a component, and each making of an object. Everything is written down.
struct FaultyRun {
    struct RunningMethod {
        std::string className;
        std::string method;
        std::int32_t line;
    };
    struct Told {
        std::int32_t number;
        std::string source;
        std::string description;
        std::string application;  // "Title Major.Minor.Revision"
        std::int32_t line;
        std::string project;
        std::string className;
        std::string method;
    };

    /// The number of the step that fails, from 1; 0 for a run without a fault.
    std::size_t failingStep = 0;
    ErrorLogger errorLogger = ErrorLogger::RaisesAgain;
    StoredJobs storedJobs = StoredJobs::QueuedAndRunning;
    /// Whether a method observer watches the run and keeps `runningAtFault`.
    bool isObserved = true;

    /// The steps up to and including the failing one, as "DataAccess.Query".
    std::vector<std::string> steps;
    /// What was still called behind it; handing the error over is not among them.
    std::vector<std::string> stepsAfterFault;
    std::optional<AutomationError> fault;
    /// The methods that were running when it happened, the innermost first.
    std::vector<RunningMethod> runningAtFault;
    /// What LogAndReRaiseVBError was told, in order.
    std::vector<Told> told;
    /// How many objects of each kind there are. Kinds without any are not in it.
    std::map<std::string, int> alive;

    /// Counts a step; the failing one raises.
    void Step(const std::string& what);
    /// How often this step occurs.
    std::ptrdiff_t CountOf(const std::string& step) const;

    /// The methods that are running now, the outermost first. Kept by the observer.
    std::vector<RunningMethod> running;
};

/// The factory of that world's collaborators. `run` must outlive all of them.
std::shared_ptr<CollaboratorFactory> MakeFaultyWorld(FaultyRun& run);

}  // namespace kxjob::testing_support
