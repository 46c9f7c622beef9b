#include "faults/case_sweep.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "faults/hand_over.h"
#include "support/sample_errors.h"

namespace kxjob::testing_support {
namespace {

using Kind = JournalEvent::Kind;

constexpr int kMostReports = 3;  // of one case

/// The number of the first call that failed, from 1; 0 when none did.
int NumberOfFailed(const std::vector<JournalEvent>& events) {
    const JournalEvent* failed = FailedCall(events);
    if (failed == nullptr) return 0;
    return 1 + static_cast<int>(std::count_if(events.data(), failed, [](const JournalEvent& event) {
               return event.kind == Kind::Call;
           }));
}

}  // namespace

CaseSweep::CaseSweep(FaultWorld& world, const FaultCase& given, FaultTable& table)
    : world_(world), given_(given), table_(table) {
    PictureEveryWrite();
    const FaultRun run = StrikeAt(0, [] {});
    StoreUses uses;
    for (const JournalEvent& event : run.events) {
        if (event.kind != Kind::Call) continue;
        uses_.push_back(uses.Of(event));
        calls_.push_back(event.object + "." + event.operation);
    }
    table_.Add(given_.name, static_cast<int>(calls_.size()));
    Report(WhatIsWrongWithoutFault(run), "without a fault");
}

void CaseSweep::PictureEveryWrite() {
    world_.Restore(given_);
    pictures_.push_back(world_.Picture());
    for (const Write& write : given_.writes) {
        world_.Apply(write);
        pictures_.push_back(world_.Picture());
    }
    world_.Restore(given_);
}

void CaseSweep::FailEveryCall() {
    for (int call = 1; call <= static_cast<int>(calls_.size()); ++call) {
        if (given_.isLong && UseOf(call) == StoreUse::None) continue;
        const FaultRun run = StrikeAt(call, [] { throw AutomationError(kFailure); });
        Faults faults = WhatIsWrong(run, call);
        const JournalEvent* failed = FailedCall(run.events);
        if (failed != nullptr && failed->error->Number() != kFailure.Number()) {
            faults.push_back("another error: " + failed->error->Description());
        }
        table_.Count(kErrorRaised, faults.empty());
        Report(faults, std::string(kErrorRaised) + " by call " + std::to_string(call));
    }
}

void CaseSweep::MeetEveryCall(const StoreFault& fault) {
    bool hasMet = false;
    for (int call = 1; call <= static_cast<int>(calls_.size()); ++call) {
        if (!fault.fails(UseOf(call))) continue;
        hasMet = true;
        int writesBefore = 0;
        while (MeetCall(fault, call, writesBefore) && fault.isGradual) ++writesBefore;
    }
    if (hasMet || calls_.empty() || !fault.isOverWhenMended) return;
    fault.prepare();
    const FaultRun run = StrikeAt(1, [&] { fault.strike(0); });
    fault.mend();
    Report(WhatIsWrongWithoutFault(run), fault.name + ", which must not matter");
}

bool CaseSweep::MeetCall(const StoreFault& fault, int call, int writesBefore) {
    fault.prepare();
    const FaultRun run = StrikeAt(call, [&] { fault.strike(writesBefore); });
    fault.mend();
    if (writesBefore > 0 && NumberOfFailed(run.events) != call) {  // it had all the room that it needs
        world_.Restore(given_);
        return false;
    }
    Faults faults = WhatIsWrong(run, call);
    const JournalEvent* failed = FailedCall(run.events);
    const std::string description = failed == nullptr ? "none" : failed->error->Description();
    if (std::none_of(fault.states.begin(), fault.states.end(),
                     [&](const std::string& state) { return description.starts_with(state); }) ||
        failed == nullptr || failed->error->Number() != kStatementFailed) {
        faults.push_back("another error: " + description);
    }
    table_.Count(fault.name, faults.empty());
    Report(faults, fault.name + " at call " + std::to_string(call) + " after " +
                       std::to_string(writesBefore) + " writes");
    return true;
}

void CaseSweep::TakeTheStoreFromOtherCalls(const StoreFault& fault) {
    bool isAway = false;
    const FaultRun run = world_.Perform(given_, [&](int number, const JournalEvent&) {
        const bool shallBeAway = UseOf(number) == StoreUse::None;
        if (shallBeAway != isAway) shallBeAway ? fault.strike(0) : fault.mend();
        isAway = shallBeAway;
    });
    if (isAway) fault.mend();
    Report(WhatIsWrongWithoutFault(run), "the store is there for its own calls only");
}

FaultRun CaseSweep::StrikeAt(int call, const Strike& strike) {
    return world_.Perform(given_, [&](int number, const JournalEvent&) {
        if (number == call) strike();
    });
}

CaseSweep::Faults CaseSweep::WhatIsWrong(const FaultRun& run, int call) {
    if (!run.raised) {
        world_.Restore(given_);
        return {"nothing was raised"};
    }
    Faults faults = FaultsOfHandOver(run.events, given_.className, *run.raised);
    if (NumberOfFailed(run.events) != call) {
        faults.push_back("call " + std::to_string(NumberOfFailed(run.events)) + " failed");
    }
    for (const std::string& fault : WhatIsLeft(run)) faults.push_back(fault);
    // A timer is not the call's own object, and may be there while the error is told.
    const int mayLive = 1 + (given_.fromConfiguration || given_.className == "DurationTimer" ? 1 : 0);
    if (run.aliveWhenTold < 1 || run.aliveWhenTold > mayLive) {
        faults.push_back(std::to_string(run.aliveWhenTold) + " objects alive while the error is told");
    }
    const auto done = std::count(uses_.begin(), uses_.begin() + (call - 1), StoreUse::Writes);
    CheckPicture(static_cast<std::size_t>(done), faults);
    return faults;
}

CaseSweep::Faults CaseSweep::WhatIsWrongWithoutFault(const FaultRun& run) {
    Faults faults = WhatIsLeft(run);
    if (run.raised) faults.push_back("raised " + run.raised->Description());
    CheckPicture(given_.writes.size(), faults);
    return faults;
}

CaseSweep::Faults CaseSweep::WhatIsLeft(const FaultRun& run) {
    Faults faults;
    if (run.aliveAfterCall > (given_.fromConfiguration ? 1 : 0) || run.aliveAtEnd != 0) {
        faults.push_back(std::to_string(run.aliveAfterCall) + " objects alive after the call, " +
                         std::to_string(run.aliveAtEnd) + " after the instance");
    }
    const std::string next = world_.WhatIsWrongWithTheNextCall();
    if (!next.empty()) faults.push_back(next);
    return faults;
}

void CaseSweep::CheckPicture(std::size_t writesDone, Faults& faults) {
    const StorePicture found = world_.Picture();
    if (writesDone >= pictures_.size()) {
        faults.push_back("more is written than published");
    } else if (found != pictures_[writesDone]) {
        faults.push_back("the rows after " + std::to_string(writesDone) +
                         " writes differ:" + DifferenceOf(pictures_[writesDone], found));
    }
    if (found != pictures_.front()) world_.Restore(given_);
}

void CaseSweep::Report(const Faults& faults, const std::string& when) {
    if (faults.empty() || ++reported_ > kMostReports) return;
    std::string text = given_.name + ", " + when;
    for (const std::string& fault : faults) text += "\n- " + fault;
    ADD_FAILURE() << text;
}

}  // namespace kxjob::testing_support
