#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <span>

#include "contract/contract_engine.h"
#include "contract/library_thread.h"
#include "defaults/configuration/environment_variable.h"
#include "files/temporary_folder.h"
#include "kxjob/automation_error.h"
#include "kxjob/caller_texts.h"
#include "kxjob/store.h"
#include "model/model_report.h"
#include "model/steps.h"
#include "model/store_comparison.h"

namespace kxjob::model {
namespace {

using testing_support::ContractEngine;
using testing_support::ContractStore;
using testing_support::EnvironmentVariable;
using testing_support::LibraryThread;
using testing_support::TemporaryFolder;

/// What one step is drawn from: its kind and its arguments.
using Numbers = std::array<std::uint16_t, 16>;

const std::vector<StepKind>& EveryKind() {
    static const std::vector<StepKind> all = [] {
        std::vector<StepKind> kinds;
        for (const auto& family :
             {LifecycleSteps(), TaskSteps(), StatusSteps(), QuerySteps(), StatisticsSteps(),
              SchedulingSteps(), RemovalSteps(), VocabularySteps(), OutsideSteps()}) {
            kinds.insert(kinds.end(), family.begin(), family.end());
        }
        return kinds;
    }();
    return all;
}

/// Each kind as often as it weighs; while there is no job, half of them create one.
const StepKind& KindOf(std::size_t number, const Tables& tables) {
    static const std::vector<const StepKind*> weighed = [] {
        std::vector<const StepKind*> kinds;
        for (const StepKind& kind : EveryKind()) kinds.insert(kinds.end(), kind.weight, &kind);
        return kinds;
    }();
    if (tables.job.rows.empty() && number % 2 == 0) return *weighed.front();
    return *weighed[number % weighed.size()];
}

rc::Gen<std::vector<Numbers>> Sequences() {
    constexpr int kMostSteps = 80;
    constexpr std::uint16_t kLimit = 10080;  // divisible by the sizes of most pools
    return rc::gen::resize(kMostSteps, rc::gen::container<std::vector<Numbers>>(rc::gen::container<Numbers>(
                                           rc::gen::inRange<std::uint16_t>(0, kLimit))));
}

class ModelSequence : public testing::TestWithParam<ContractEngine> {
protected:
    void SetUp() override {
        if (!GetParam().whyMissing.empty()) GTEST_SKIP() << GetParam().whyMissing;
        thread_ = std::make_unique<LibraryThread>();
        contractStore_ = GetParam().makeStore();
        place_ = {contractStore_->ConnectionString(), GetParam().provider, kQualifier};
        if (GetParam().provider == dspMariaDb) place_.shortTextLimit = 255;
        std::ofstream(folder_.File("kxjob.conf"))
            << "ADOConnectionString = " << place_.connection << "\n"
            << "Provider = " << GetParam().provider << "\n"
            << "NameSpaceQualifier = " << kQualifier << "\n"
            << "log.level = 0\nlog.file = " << folder_.File("log") << "\n";
        store_ = std::make_unique<Store>(place_.connection, place_.provider, kQualifier);
        store_->CreateTables();
    }
    void TearDown() override { thread_.reset(); }

    /// Runs one sequence on empty tables; fails at the first step after which store and model differ.
    void Run(const std::vector<Numbers>& sequence);

    StepCounts counts_;

private:
    Tables StartAnew();
    Outcome Call(const Step& step);

    TemporaryFolder folder_;
    EnvironmentVariable configuration_{"KXJOB_CONFIG", folder_.File("kxjob.conf")};
    std::unique_ptr<LibraryThread> thread_;
    std::unique_ptr<ContractStore> contractStore_;
    Address place_;
    std::unique_ptr<Store> store_;
};

Tables ModelSequence::StartAnew() {
    Tables tables;
    for (const Table* table : tables.All()) store_->Execute("DELETE FROM " + store_->Table(table->name));
    for (const char* table : {"systemflag", "subsystem", "applicationstate"}) {
        store_->Execute("DELETE FROM " + store_->Table(table));
    }
    for (const auto& [type, component] : {std::pair<const char*, Value>{"TYPE", "kxTimer_83.Timer"},
                                          {"type", "kxTimer_83.Timer"},
                                          {"OTHER", "kxTimer_83.Timer"},
                                          {"GHOST", "Nobody_83.Nothing"}}) {
        store_->Execute("INSERT INTO kx_JobType (jobtypeid, implprogid) VALUES (" + store_->Literal(type) +
                        ", " + store_->Literal(component) + ")");
        tables.jobType.Insert({{"jobtypeid", Value(type)}, {"implprogid", component}});
    }
    return tables;
}

Outcome ModelSequence::Call(const Step& step) {
    JobHelper jobs;
    Outcome outcome;
    outcome.began = NowISODateTime();
    try {
        outcome.result = step.call(jobs, *store_);
    } catch (const AutomationError& error) {
        outcome.error = error.Number();
    }
    outcome.ended = NowISODateTime();
    return outcome;
}

Foretold Foretell(const Step& step, Tables& tables) {
    try {
        return {.result = step.effect(tables)};
    } catch (const Raised& raised) {
        return {.errors = raised.numbers};
    }
}

void ModelSequence::Run(const std::vector<Numbers>& sequence) {
    Tables tables = StartAnew();
    StoreComparison comparison(*store_);
    std::string told;
    for (const Numbers& numbers : sequence) {
        Draw draw(std::span<const std::uint16_t>(numbers).subspan(1), place_);
        const Step step = KindOf(numbers[0], tables).make(draw, tables);
        told += step.name + "(" + draw.Drawn() + ")\n";
        const Outcome outcome = Call(step);
        const Foretold foretold = Foretell(step, tables);
        const std::string difference = comparison.DifferenceAfter(outcome, foretold, tables);
        ++counts_[step.name].compared;
        if (outcome.error) ++counts_[step.name].raised;
        if (!difference.empty()) RC_FAIL(told + "then store and model differ:\n" + difference);
    }
}

/// As many as take a few seconds; servers and drivers take longer over each.
std::size_t WantedSteps(const ContractEngine& engine) {
    if (const char* wanted = std::getenv("KXJOB_MODEL_STEPS")) return std::strtoul(wanted, nullptr, 10);
    if (!engine.serverName.empty()) return 2500;
    return engine.name == "SqliteFile" ? 12000 : 5000;
}

bool IsMethod(const std::string& name) {
    return std::isupper(static_cast<unsigned char>(name[0])) != 0;
}

TEST_P(ModelSequence, EveryStepLeavesStoreAndResultAsTheModelSays) {
    constexpr std::size_t kMeanSteps = 40;
    constexpr std::ptrdiff_t kMethods = 35;
    const std::size_t wanted = WantedSteps(GetParam());
    rc::detail::TestMetadata about;
    about.id = about.description = "steps on " + GetParam().name;
    rc::detail::TestParams parameters = rc::detail::configuration().testParams;
    parameters.maxSuccess = static_cast<int>(wanted / kMeanSteps + 1);

    const rc::detail::TestResult result =
        rc::detail::checkTestable([this] { Run(*Sequences()); }, about, parameters);

    rc::detail::printResultMessage(result, std::cout);
    std::cout << "\n";
    ASSERT_TRUE(result.is<rc::detail::SuccessResult>());
    const std::size_t least = wanted * 4 / 5;  // the lengths are drawn too
    ReportSteps(GetParam().name, counts_, least);
    EXPECT_GE(AllCompared(counts_), least);
    EXPECT_EQ(std::count_if(counts_.begin(), counts_.end(),
                            [](const auto& count) { return IsMethod(count.first); }),
              kMethods);
    for (const auto& [name, count] : counts_) EXPECT_GT(count.compared, count.raised) << name;
}

INSTANTIATE_TEST_SUITE_P(Engines, ModelSequence, testing::ValuesIn(testing_support::EveryEngine()),
                         testing_support::EngineName);

}  // namespace
}  // namespace kxjob::model
