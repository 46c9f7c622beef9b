#include <algorithm>

#include "frame/frame.h"
#include "kxjob/collection.h"
#include "kxjob/job_helper.h"

namespace kxjob {
namespace {

/// The qualifier without its dots, as log lines show it.
std::string ContainerName(std::string nameQualifier) {
    std::erase(nameQualifier, '.');
    return nameQualifier;
}

/// One of the candidates, each with the same chance.
std::string PickAtRandom(Frame& frame, const Collection& candidates) {
    frame.SeedFromTimer();
    const double random = frame.NextRandom();
    const auto index = static_cast<std::size_t>(random * static_cast<double>(candidates.Count())) + 1;
    return frame.Use(candidates).Item(index).ToText();
}

}  // namespace

void JobHelper::GetNextJob(std::string ConnectionString, DataStoreProvider Provider,
                           std::string NameQualifier, std::string& JobGUID, double& JobRank) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"Provider", Provider},
                                {"NameQualifier", NameQualifier},
                                ByReference("JobGUID", JobGUID),
                                ByReference("JobRank", JobRank)};
    return InFrame("GetNextJob", given, [&](Frame& frame) {
        frame.Use(*this).LowImpactGetNextJob(ConnectionString, Provider, NameQualifier, JobGUID, JobRank);
    });
}

void JobHelper::LowImpactGetNextJob(std::string ConnectionString, DataStoreProvider Provider,
                                    std::string NameQualifier, std::string& JobGUID, double& JobRank) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"Provider", Provider},
                                {"NameQualifier", NameQualifier},
                                ByReference("JobGUID", JobGUID),
                                ByReference("JobRank", JobRank)};
    return InFrame("LowImpactGetNextJob", given, [&](Frame& frame) {
        frame.NowISODateTime();  // asked for and not used: published behaviour
        frame.CheckParameter(NameQualifier, "NameQualifier");
        std::shared_ptr<Collection> queuedJobs;
        std::shared_ptr<Collection> runningJobs;
        frame.Use(*this).GetQueuedAndRunningJobs(ConnectionString, Provider, NameQualifier, queuedJobs,
                                                 runningJobs);

        std::shared_ptr<Collection> candidates;
        if (const std::size_t queued = frame.UseObject(queuedJobs).Count(); queued > 0) {
            frame.Trace(kProgress, "There were " + std::to_string(queued) + " QUEUED Job(s)");
            candidates = queuedJobs;
            JobRank = 1.0;
        } else if (frame.UseObject(runningJobs).Count() > 0) {
            frame.Use(*this).GetHighestRankingRunningJobs(ConnectionString, Provider, NameQualifier,
                                                          runningJobs, candidates, JobRank);
        }
        if (candidates == nullptr) {
            frame.Trace(kProgress, "There are no jobs in '" + ContainerName(NameQualifier) +
                                       "' that this machine can create that are QUEUED or RUNNING");
            return;
        }
        JobGUID = PickAtRandom(frame, *candidates);
        frame.Trace(kDecision, "Recommending that job " + JobGUID + " in '" + ContainerName(NameQualifier) +
                                   "' is run, it has rank " + DoubleText(JobRank));
    });
}

}  // namespace kxjob
