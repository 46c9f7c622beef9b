#pragma once

#include "collaborators/array_inspector.h"
#include "collaborators/environment_info.h"
#include "collaborators/guid_service.h"
#include "collaborators/random_source.h"
#include "collaborators/time_service.h"
#include "collaborators/trace_log.h"
#include "journal/recorded.h"

namespace kxjob {

// The collaborators that know the machine and the process.

class RecordedTraceLog : public Recorded<TraceLog> {
public:
    using Recorded::Recorded;

    void Write(const std::string& message, std::int32_t& level, const std::string& project,
               const std::string& className, const std::string& method) override {
        Forward("TraceLog", "Write", &TraceLog::Write, message, level, project, className, method);
    }
    std::string VersionOf(const ComponentRef& application) override {
        return Record("TraceLog", "VersionOf", {application},
                      [&](TraceLog& inner) { return inner.VersionOf(application); });
    }
};

class RecordedGuidService : public Recorded<GuidService> {
public:
    using Recorded::Recorded;

    std::string NewGuid() override { return Forward("GuidService", "NewGuid", &GuidService::NewGuid); }
    std::string NullGuid() override { return Forward("GuidService", "NullGuid", &GuidService::NullGuid); }
};

class RecordedTimeService : public Recorded<TimeService> {
public:
    using Recorded::Recorded;

    std::string NowISODateTime() override {
        return Forward("TimeService", "NowISODateTime", &TimeService::NowISODateTime);
    }
    std::string DurationText(double duration) override {
        return Forward("TimeService", "DurationText", &TimeService::DurationText, duration);
    }
};

class RecordedArrayInspector : public Recorded<ArrayInspector> {
public:
    using Recorded::Recorded;

    std::int32_t LowerBound(const Value& array) override {
        return Forward("ArrayInspector", "LowerBound", &ArrayInspector::LowerBound, array);
    }
    std::int32_t UpperBound(const Value& array) override {
        return Forward("ArrayInspector", "UpperBound", &ArrayInspector::UpperBound, array);
    }
    std::int32_t ElementCount(const Value& array) override {
        return Forward("ArrayInspector", "ElementCount", &ArrayInspector::ElementCount, array);
    }
    std::int32_t DimensionCount(const Value& array) override {
        return Forward("ArrayInspector", "DimensionCount", &ArrayInspector::DimensionCount, array);
    }
};

class RecordedRandomSource : public Recorded<RandomSource> {
public:
    using Recorded::Recorded;

    void SeedFromTimer() override { Forward("RandomSource", "SeedFromTimer", &RandomSource::SeedFromTimer); }
    float Next() override { return Forward("RandomSource", "Next", &RandomSource::Next); }
};

class RecordedEnvironmentInfo : public Recorded<EnvironmentInfo> {
public:
    using Recorded::Recorded;

    std::int32_t ProcessId() override { return Read("ProcessId", &EnvironmentInfo::ProcessId); }
    std::int32_t ThreadId() override { return Read("ThreadId", &EnvironmentInfo::ThreadId); }
    std::string FirstMachineText() override {
        return Read("FirstMachineText", &EnvironmentInfo::FirstMachineText);
    }
    std::string SecondMachineText() override {
        return Read("SecondMachineText", &EnvironmentInfo::SecondMachineText);
    }
    std::string FirstUserText() override { return Read("FirstUserText", &EnvironmentInfo::FirstUserText); }
    std::string SecondUserText() override { return Read("SecondUserText", &EnvironmentInfo::SecondUserText); }

private:
    template <typename Result>
    Result Read(const char* operation, Result (EnvironmentInfo::*member)()) {
        return Forward("EnvironmentInfo", operation, member);
    }
};

}  // namespace kxjob
