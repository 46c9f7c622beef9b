#include "calls/call_pair.h"

#include "calls/container.h"
#include "measuring/replay.h"

namespace kxjob::bench {

CallPair::CallPair(const Engine& engine, const testing_support::MethodCall& method)
    : method_(method), driverStore_(engine), libraryStore_(engine), reset_(ResetAfter(method.name)) {
    for (const std::string& sql : FillContainer()) {
        driverStore_.RunBare(sql);
        libraryStore_.RunByLibrary(sql);
    }
    recorded_ = StatementsOf(driverStore_.Connection(), [&] {
        JobHelper helper;
        Call(helper, driverStore_);
    });
    constexpr int kWarmUp = 3;
    for (int i = 0; i < kWarmUp; ++i) {
        ResetDriver();
        RunDriver();
        ResetLibrary();
        RunLibrary();
    }
}

void CallPair::ResetDriver() {
    for (const std::string& sql : reset_) driverStore_.RunBare(sql);
    replayed_ = WithNewGuids(recorded_);
}

void CallPair::RunDriver() {
    Replay(driverStore_.Driver(), replayed_);
}

void CallPair::ResetLibrary() {
    for (const std::string& sql : reset_) libraryStore_.RunByLibrary(sql);
}

void CallPair::Call(JobHelper& helper, const BenchStore& store) {
    method_.call(helper, store.Connection(), store.Provider(), store.Qualifier());
}

}  // namespace kxjob::bench
