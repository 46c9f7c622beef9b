#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "collaborators/method_observer.h"
#include "kxjob/call_journal.h"

namespace kxjob {

/// Turns what happens on one thread into events: it watches the methods, and runs the calls that they make.
/// What a collaborator does for itself on the same thread is not the library's doing and leaves no event.
class Recorder : public MethodObserver {
public:
    explicit Recorder(JournalSink& sink);

    void Enter(std::string_view className, std::string_view method, Arguments arguments) override;
    void At(std::int32_t line) override;
    void Leave(std::string_view method, const Value* result, Arguments arguments) override;
    void Raise(std::string_view method, const AutomationError& error) override;

    /// From now on nothing is recorded: the sink may be gone before the objects that record into it.
    void Detach() { sink_ = nullptr; }

    /// Runs `work` as one call of a collaborator; `show` gives what the journal shows of its result.
    template <typename Work, typename Show>
    auto Call(std::string object, std::string operation, std::vector<Value> arguments, Work&& work,
              Show&& show) -> std::invoke_result_t<Work&> {
        if (!IsRecording()) return work();
        JournalEvent event = CallEvent(std::move(object), std::move(operation), std::move(arguments));
        if constexpr (std::is_void_v<std::invoke_result_t<Work&>>) {
            Run(work, event);
            Write(event);
        } else {
            auto result = Run(work, event);
            event.result = show(result);
            Write(event);
            return result;
        }
    }

private:
    struct RunningMethod {
        std::string name;
        std::int32_t line = 0;
        bool isCalling = false;
    };

    /// A method's call of a collaborator, as long as it takes.
    class Calling {
    public:
        explicit Calling(RunningMethod& method) : method_(method) { method_.isCalling = true; }
        Calling(const Calling&) = delete;
        Calling& operator=(const Calling&) = delete;
        ~Calling() { method_.isCalling = false; }

    private:
        RunningMethod& method_;
    };

    template <typename Work>
    auto Run(Work& work, JournalEvent& event) -> std::invoke_result_t<Work&> {
        try {
            sink_->BeforeCall(event);
            const Calling calling(methods_.back());
            return work();
        } catch (...) {
            WriteFailed(event);
            throw;
        }
    }

    bool IsRecording() const { return sink_ != nullptr && !methods_.back().isCalling; }
    JournalEvent CallEvent(std::string object, std::string operation, std::vector<Value> arguments) const;
    void Write(const JournalEvent& event);
    /// Adds the error being handled.
    void WriteFailed(JournalEvent& event);
    void LeaveMethod();

    JournalSink* sink_;
    std::deque<RunningMethod> methods_;  // the first stands for callers that are no method
};

}  // namespace kxjob
