#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "collaborators/this_thread.h"
#include "composition/counting_collaborators.h"
#include "composition/pick_judge.h"
#include "contract/process_group.h"
#include "defaults/store/store_test_support.h"
#include "kxjob/job_helper.h"
#include "kxjob/store.h"
#include "proof/proof_output.h"

namespace kxjob {
namespace {

using testing_support::Census;
using testing_support::CountingCollaborators;
using testing_support::JudgePicks;
using testing_support::PickVerdict;
using testing_support::ProcessGroup;
using testing_support::Prove;
using testing_support::TemporaryDatabase;

constexpr std::size_t kCandidates = 7;  // no power of two: a coarse number cannot be shared out evenly
constexpr int kQueuedPicks = 4200;
constexpr int kRunningPicks = 1400;
constexpr int kPicksOfWrongSources = 1400;

std::string JobName(std::size_t number) {
    return "{00000000-0000-4000-8000-00000000000" + std::to_string(number) + "}";
}

/// The random source that ships, replaced by another.
class WithRandomSource : public CountingCollaborators {
public:
    explicit WithRandomSource(std::shared_ptr<RandomSource> source)
        : CountingCollaborators(MakePlatformCollaborators(), std::make_shared<Census>()),
          source_(std::move(source)) {}
    std::shared_ptr<RandomSource> MakeRandomSource() override { return source_; }

private:
    std::shared_ptr<RandomSource> source_;
};

/// A source that is wrong in one way: what it gives is made from a right number.
class WrongSource : public RandomSource {
public:
    using Wrong = std::function<float(float right, int draw)>;

    explicit WrongSource(Wrong wrong) : wrong_(std::move(wrong)) {}
    void SeedFromTimer() override {}
    float Next() override {
        constexpr float kOneStep = 0x1p-24F;
        return wrong_(static_cast<float>(engine_() >> 8U) * kOneStep, draws_++);
    }

private:
    Wrong wrong_;
    std::mt19937 engine_{20'260'301};
    int draws_ = 0;
};

/// Draws the first number of the sequence that this seed starts.
float FirstOf(int seed) {
    constexpr float kOneStep = 0x1p-24F;
    return static_cast<float>(std::mt19937(static_cast<std::uint32_t>(seed))() >> 8U) * kOneStep;
}

/// What the tests of this file found, for whoever reads it.
class Page {
public:
    void Add(const std::string& asked, const PickVerdict& verdict) {
        text_ << "| " << asked << " | ";
        for (const std::size_t count : verdict.counts) text_ << count << " ";
        text_ << "| " << verdict.chiSquare << " | " << verdict.chance << " | " << verdict.chiSquareOfPairs
              << " | " << verdict.chanceOfPairs << " | " << (verdict.IsRefused() ? "refused" : "uniform")
              << " |\n";
    }
    std::string Text() const {
        std::ostringstream out;
        out << "## The pick of the next job\n\nPicks among " << kCandidates
            << " equal jobs, by GetNextJob on a SQLite file. A source is refused when a uniform one would "
               "give"
               " such counts, or such counts of successive pairs, less often than once in 1E+9 tries.\n\n"
               "| source | picks of each job | chi-square | chance | of pairs | chance | verdict |\n"
               "|---|---|---|---|---|---|---|\n"
            << text_.str();
        return out.str();
    }

private:
    std::ostringstream text_;
};

class NextJobPick : public testing::Test {
protected:
    static void TearDownTestSuite() { testing_support::WriteProof("next_job", ThePage().Text()); }
    static Page& ThePage() {
        static Page page;
        return page;
    }

    /// That many jobs, alike in everything.
    void MakeCandidates(const char* state) {
        Store store(database_.ConnectionString(), dspSqlite, "");
        store.CreateTables();
        store.Execute(
            "INSERT INTO JobType (jobtypeid, description, implprogid, notificationprogid)"
            " VALUES ('T', '', 'kxTimer_83.Timer', '')");
        for (std::size_t i = 0; i < kCandidates; ++i) {
            store.Execute("INSERT INTO job (jobguid, jobtypeid, jobstateid) VALUES ('" + JobName(i) +
                          "', 'T', '" + state + "')");
        }
    }

    std::size_t Pick(JobHelper& jobs) const {
        std::string job;
        double rank = 0;
        jobs.GetNextJob(database_.ConnectionString(), dspSqlite, "", job, rank);
        for (std::size_t i = 0; i < kCandidates; ++i) {
            if (job == JobName(i)) return i;
        }
        throw std::runtime_error("no candidate: '" + job + "'");
    }

    std::vector<std::size_t> Picks(int count) const {
        JobHelper jobs;
        std::vector<std::size_t> picks;
        for (int i = 0; i < count; ++i) picks.push_back(Pick(jobs));
        return picks;
    }

    ~NextJobPick() override { InstallCollaborators(nullptr); }

    TemporaryDatabase database_;
};

TEST_F(NextJobPick, IsUniformAndTellsNothingAboutTheNextOne) {
    MakeCandidates("QUEUED");
    const PickVerdict queued = JudgePicks(Picks(kQueuedPicks), kCandidates);
    ThePage().Add("the clock's, QUEUED jobs", queued);
    EXPECT_FALSE(queued.IsRefused()) << queued.chance << " " << queued.chanceOfPairs;

    Store(database_.ConnectionString(), dspSqlite, "").Execute("UPDATE job SET jobstateid = 'RUNNING'");
    const PickVerdict running = JudgePicks(Picks(kRunningPicks), kCandidates);
    ThePage().Add("the clock's, RUNNING jobs", running);
    EXPECT_FALSE(running.IsRefused()) << running.chance << " " << running.chanceOfPairs;

    Prove("picks judged", kQueuedPicks + kRunningPicks, 5600);
}

TEST_F(NextJobPick, OfAWrongSourceIsRefused) {
    const std::vector<std::pair<const char*, WrongSource::Wrong>> sources{
        {"never the last", [](float right, int) { return right * 6 / 7; }},
        {"never the first", [](float right, int) { return std::min((1 + right * 6) / 7, 0.99999F); }},
        {"always the first", [](float, int) { return 0.0F; }},
        {"always the same seed", [](float, int) { return FirstOf(1); }},
        {"12 different numbers", [](float right, int) { return std::floor(right * 12) / 12; }},
        {"a new sequence at each call, 40 calls a tick", [](float, int draw) { return FirstOf(draw / 40); }},
        {"a new sequence at each call, 2 calls a tick", [](float, int draw) { return FirstOf(draw / 2); }},
        {"in turn",
         [](float, int draw) { return (static_cast<float>(draw % int{kCandidates}) + 0.5F) / kCandidates; }},
    };
    MakeCandidates("QUEUED");
    for (const auto& [name, wrong] : sources) {
        InstallCollaborators(std::make_shared<WithRandomSource>(std::make_shared<WrongSource>(wrong)));
        const PickVerdict verdict = JudgePicks(Picks(kPicksOfWrongSources), kCandidates);
        ThePage().Add(name, verdict);
        EXPECT_TRUE(verdict.IsRefused()) << name << ": " << verdict.chance << " " << verdict.chanceOfPairs;
    }
    // The same road, the same number of picks, a right number: it is the fault that is refused.
    InstallCollaborators(std::make_shared<WithRandomSource>(
        std::make_shared<WrongSource>([](float right, int) { return right; })));
    EXPECT_FALSE(JudgePicks(Picks(kPicksOfWrongSources), kCandidates).IsRefused());
}

constexpr int kAskingProcesses = 50;
constexpr int kAskingRounds = 10;
/// Of 50 picks among 7 more than 35 are the same one's less often than once in 1E+18 rounds:
/// 7 * sum over k > 35 of C(50, k) (1/7)^k (6/7)^(50-k) is below 7 * 1E-19.
constexpr int kMostAlike = 35;

struct Answers {
    std::array<std::array<std::size_t, kAskingProcesses>, kAskingRounds> picks;
};

int MostAlike(const std::array<std::size_t, kAskingProcesses>& picks) {
    int most = 0;
    for (std::size_t i = 0; i < kCandidates; ++i) {
        most = std::max(most, static_cast<int>(std::count(picks.begin(), picks.end(), i)));
    }
    return most;
}

class NextJobPickOfManyProcesses : public NextJobPick {
protected:
    /// Each process asks in each round, all of them at once.
    const Answers& Ask(const std::function<std::shared_ptr<CollaboratorFactory>()>& makeCollaborators) const {
        auto& answers = ProcessGroup::Shared<Answers>();
        InstallCollaborators(nullptr);
        const int failures = ProcessGroup::Run(
            [&](ProcessGroup& group, int place) {
                InstallCollaborators(makeCollaborators());
                JobHelper jobs;
                Pick(jobs);  // opens the file
                for (std::array<std::size_t, kAskingProcesses>& round : answers.picks) {
                    group.Meet();
                    round.at(static_cast<std::size_t>(place)) = Pick(jobs);
                }
            },
            kAskingProcesses);
        EXPECT_EQ(failures, 0);
        return answers;
    }
};

TEST_F(NextJobPickOfManyProcesses, SpreadsThoseThatAskAtOnce) {
    MakeCandidates("QUEUED");
    const Answers& answers = Ask([] { return MakePlatformCollaborators(); });

    std::vector<std::size_t> all;
    for (const auto& round : answers.picks) {
        EXPECT_LE(MostAlike(round), kMostAlike);
        all.insert(all.end(), round.begin(), round.end());
    }
    const PickVerdict verdict = JudgePicks(all, kCandidates);
    ThePage().Add("the clock's, 50 processes at once", verdict);
    EXPECT_FALSE(verdict.IsRefused()) << verdict.chance << " " << verdict.chanceOfPairs;
    EXPECT_EQ(std::count(verdict.counts.begin(), verdict.counts.end(), 0U), 0);
    Prove("processes asking at once", kAskingProcesses, 50);
}

TEST_F(NextJobPickOfManyProcesses, DoesNotSpreadThoseThatAllSeedFromOneTick) {
    MakeCandidates("QUEUED");
    const Answers& answers = Ask([] {
        return std::make_shared<WithRandomSource>(
            std::make_shared<WrongSource>([](float, int draw) { return FirstOf(draw); }));
    });

    std::vector<std::size_t> all;
    for (const auto& round : answers.picks) {
        EXPECT_GT(MostAlike(round), kMostAlike);
        all.insert(all.end(), round.begin(), round.end());
    }
    const PickVerdict verdict = JudgePicks(all, kCandidates);
    ThePage().Add("one tick for all, 50 processes at once", verdict);
    EXPECT_TRUE(verdict.IsRefused());
}

}  // namespace
}  // namespace kxjob
