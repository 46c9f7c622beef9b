#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "kxjob/call_journal.h"

namespace kxjob::testing_support {

/// Keeps the events, and lets a test act before each call of a collaborator.
class FaultSink : public JournalSink {
public:
    /// Called with the number of the call, from 1.
    using Act = std::function<void(int number, const JournalEvent& call)>;

    void Begin(Act act) {
        events_.clear();
        calls_ = 0;
        act_ = std::move(act);
    }
    void End() { act_ = nullptr; }
    const std::vector<JournalEvent>& Events() const { return events_; }

    void BeforeCall(const JournalEvent& call) override {
        if (act_) act_(++calls_, call);
    }
    void Write(const JournalEvent& event) override {
        if (!act_) return;
        events_.push_back(event);
        events_.back().result.reset();  // an event must not keep a component alive
    }

private:
    Act act_;
    int calls_ = 0;
    std::vector<JournalEvent> events_;
};

}  // namespace kxjob::testing_support
