#include "faults/hand_over.h"

#include <algorithm>
#include <optional>

#include "support/sweep_sentence.h"

namespace kxjob::testing_support {
namespace {

using Kind = JournalEvent::Kind;

/// The methods that run at `end`, the innermost first.
std::vector<std::string> RunningAt(const JournalEvent* begin, const JournalEvent* end) {
    std::vector<std::string> running;
    for (const JournalEvent* event = begin; event != end; ++event) {
        if (event->kind == Kind::Enter) running.push_back(event->method);
        if (event->kind == Kind::Leave) running.pop_back();
    }
    std::reverse(running.begin(), running.end());
    return running;
}

std::string TextOf(const AutomationError& error) {
    return std::to_string(error.Number()) + " | " + error.Source() + " | " + error.Description();
}

class HandOver {
public:
    HandOver(const std::vector<JournalEvent>& events, const JournalEvent* failed, std::string className)
        : next_(failed + 1),
          end_(events.data() + events.size()),
          failed_(*failed),
          className_(std::move(className)),
          running_(RunningAt(events.data(), failed)) {}

    std::vector<std::string> Check(const AutomationError& raised) {
        for (std::size_t frame = 0; frame < running_.size(); ++frame) CheckFrame(frame);
        Require(next_ == end_, "something is called after the last method raised");
        const AutomationError expected = ErrorBehind(running_.size());
        Require(TextOf(raised) == TextOf(expected),
                "the caller got\n  " + TextOf(raised) + "\n  instead of\n  " + TextOf(expected));
        return std::move(faults_);
    }

private:
    void CheckFrame(std::size_t frame) {
        const std::string& method = running_[frame];
        const std::string expected = TextOf(ErrorBehind(frame + 1));
        const JournalEvent* creation = Next(Kind::Call, "CreateObject", method);
        if (creation == nullptr) return;
        Require(creation->arguments.at(0) == Value("DebugTools_83.Helper"),
                method + " creates another object");

        const JournalEvent* told = Next(Kind::Call, "LogAndReRaiseVBError", method);
        if (told == nullptr) return;
        const std::optional<AutomationError> held = HeldError(told->arguments.at(0));
        Require(
            held && TextOf(*held) == expected,
            method + " tells\n  " + (held ? TextOf(*held) : "no error") + "\n  instead of\n  " + expected);
        const bool isInnermost = frame == 0;
        Require(told->arguments.at(2) == Value(isInnermost ? failed_.line : told->line) && told->line > 0,
                method + " tells line " + told->arguments.at(2).ToText());
        Require(told->arguments.at(1).Object()->Get("Title") == Value("Job_83") &&
                    told->arguments.at(3) == Value("Job_83") && told->arguments.at(4) == Value(className_) &&
                    told->arguments.at(5) == Value(method),
                method + " tells another name");

        const JournalEvent* raised = Next(Kind::Raise, "", method);
        if (raised == nullptr) return;
        Require(TextOf(*raised->error) == expected, method + " raises " + TextOf(*raised->error));
    }

    /// The next event, which must be of this kind and method.
    const JournalEvent* Next(Kind kind, const std::string& operation, const std::string& method) {
        if (next_ != end_ && next_->kind == kind && next_->operation == operation &&
            next_->method == method) {
            return next_++;
        }
        Require(false, method + " does not " + (kind == Kind::Raise ? "raise" : operation) + " next");
        return nullptr;
    }

    AutomationError ErrorBehind(std::size_t frames) const {
        const std::string step = failed_.object + "." + failed_.operation;
        return {failed_.error->Number(), failed_.error->Source(),
                DescriptionBehind(running_, frames, step, failed_.error->Description())};
    }

    void Require(bool holds, const std::string& otherwise) {
        if (!holds) faults_.push_back(otherwise);
    }

    const JournalEvent* next_;
    const JournalEvent* end_;
    const JournalEvent& failed_;
    std::string className_;
    std::vector<std::string> running_;
    std::vector<std::string> faults_;
};

}  // namespace

const JournalEvent* FailedCall(const std::vector<JournalEvent>& events) {
    const auto failed = std::find_if(events.begin(), events.end(), [](const JournalEvent& event) {
        return event.kind == Kind::Call && event.error.has_value();
    });
    return failed == events.end() ? nullptr : &*failed;
}

std::vector<std::string> FaultsOfHandOver(const std::vector<JournalEvent>& events,
                                          const std::string& className, const AutomationError& raised) {
    const JournalEvent* failed = FailedCall(events);
    if (failed == nullptr) return {"an error was raised and no call had failed: " + raised.Description()};
    return HandOver(events, failed, className).Check(raised);
}

}  // namespace kxjob::testing_support
