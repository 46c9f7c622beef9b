#include "faults/fault_world.h"

#include <fstream>

#include "collaborators/this_thread.h"
#include "defaults/store/open_session.h"
#include "journal/journaling_collaborators.h"
#include "kxjob/array.h"
#include "seeded/seeded_store.h"
#include "support/every_method.h"

namespace kxjob::testing_support {
namespace {

constexpr const char* kQualifier = "kx_";

/// The rows anew, with those that the published calls must leave alone and those that a sweep finds.
std::vector<std::string> StatementsOf(Store& store) {
    std::vector<std::string> all;
    for (const char* table : {"job", "JobItem", "jobtask", "JobType", "systemflag", "adminhistory",
                              "applicationstate", "subsystem"}) {
        all.push_back("DELETE FROM " + store.Table(table));
    }
    for (const std::string& sql : SeedStatements(store)) all.push_back(sql);
    const std::string staying = store.Literal(kStayingJobGuid);
    all.push_back("INSERT INTO kx_job (jobguid, jobtypeid, appstateguid, jobstateid) VALUES (" + staying +
                  ", " + store.Literal(kJobType) + ", " + store.Literal(kProductionGuid) + ", 'COMPLETE')");
    for (const std::string& job : {staying, std::string("'gone'")}) {
        const std::string mark = job == staying ? "'of the staying job'" : "'an orphan'";
        all.push_back("INSERT INTO kx_JobItem (jobitemguid, jobguid, sequence) VALUES (" + mark + ", " + job +
                      ", 7)");
        all.push_back("INSERT INTO kx_jobtask (jobtaskguid, jobguid) VALUES (" + mark + ", " + job + ")");
    }
    return all;
}

}  // namespace

FaultWorld::FaultWorld(const ContractEngine& engine)
    : engine_(engine),
      configuration_("KXJOB_CONFIG", folder_.File("kxjob.conf")),
      store_(engine.makeStore()),
      connectionString_(store_->ConnectionString()) {
    std::ofstream(folder_.File("kxjob.conf"))
        << "ADOConnectionString = " << connectionString_ << "\nProvider = " << engine.provider
        << "\nNameSpaceQualifier = " << kQualifier << "\nlog.file = " << folder_.File("log") << "\n";
    InstallCollaborators(std::make_shared<JournalingCollaborators>(
        std::make_shared<CountingCollaborators>(MakePlatformCollaborators(), census_), sink_));
    Store store(connectionString_, engine.provider, kQualifier);
    store.CreateTables();
    seeds_ = StatementsOf(store);
    own_ = OpenSession(connectionString_);
}

FaultWorld::~FaultWorld() {
    InstallCollaborators(nullptr);
}

void FaultWorld::Restore(const FaultCase& given) {
    own_->RunBatch(seeds_);
    if (!given.before.empty()) own_->Execute(given.before);
}

FaultRun FaultWorld::Perform(const FaultCase& given, const FaultSink::Act& act) {
    FaultRun run;
    sink_.Begin([&](int number, const JournalEvent& call) {
        if (call.operation == "LogAndReRaiseVBError") run.aliveWhenTold = census_->alive;
        act(number, call);
    });
    {
        JobHelper helper;
        try {
            given.call(helper, given.fromConfiguration ? "" : connectionString_, engine_.provider,
                       given.fromConfiguration ? "" : kQualifier);
        } catch (const AutomationError& error) {
            run.raised = error;
        }
        run.aliveAfterCall = census_->alive;
    }
    run.aliveAtEnd = census_->alive;
    run.events = sink_.Events();
    sink_.End();
    return run;
}

std::string FaultWorld::WhatIsWrongWithTheNextCall() {
    try {
        const Value type = JobHelper().GetJobType(connectionString_, engine_.provider, kQualifier, kJobType);
        return type.IsRowArray() ? "" : "the next call finds nothing";
    } catch (const AutomationError& error) {
        return "the next call fails: " + error.Description();
    }
}

std::string FaultWorld::LibrarySession() {
    return Store(connectionString_, engine_.provider, kQualifier)
        .Query(engine_.sessionId)
        .Rows()
        .Cell(0, 0)
        .ToText();
}

}  // namespace kxjob::testing_support
