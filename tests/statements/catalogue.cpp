#include "statements/catalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>

#include "collaborators/this_thread.h"
#include "defaults/configuration/environment_variable.h"
#include "files/temporary_folder.h"
#include "journal/journaling_collaborators.h"
#include "kxjob/automation_error.h"
#include "seeded/seeded_store.h"
#include "statements/placeholders.h"
#include "statements/statement_recorder.h"

namespace kxjob::testing_support {
namespace {

/// All that is known of a method while the variants are called.
struct Notes {
    struct Statement {
        std::string shape;
        std::string sent;
        std::set<std::size_t> variants;
    };
    std::vector<Statement> statements;
    std::vector<std::string> runs;
    std::set<std::size_t> variants;  // those that ran the method
};

class Recording {
public:
    explicit Recording(const std::vector<Family>& families) {
        for (const Family& family : families) {
            for (const Variant& variant : family.variants) called_.insert(variant.method);
        }
        std::ofstream(folder_.File("kxjob.conf")) << "log.file = " << folder_.File("log") << "\n";
        InstallCollaborators(nullptr);
        SeedStore("Driver=SQLite;Database=" + seeded_, "kx_");
        InstallCollaborators(
            std::make_shared<JournalingCollaborators>(MakePlatformCollaborators(), recorder_));
    }
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;
    ~Recording() { InstallCollaborators(nullptr); }

    void Call(const Variant& variant) {
        const std::string file = folder_.File(std::to_string(variants_.size()) + ".db");
        std::filesystem::copy_file(seeded_, file);
        const std::string connection = "Driver=SQLite;Database=" + file;
        command::JobStore host({connection, dspSqlite, "kx_"});
        for (const std::string& sql : variant.before) host.Execute(sql);
        JobHelper jobs;
        recorder_.Clear();
        std::string raised;
        try {
            variant.call({jobs, host, connection, dspSqlite, "kx_"});
        } catch (const AutomationError& error) {
            raised = error.Description();
        }
        EXPECT_EQ(!raised.empty(), variant.raises) << variant.method << ": " << raised;
        Note(variant);
    }

    /// What the variants of a method show; of one that has none, those that lead to it.
    CataloguedMethod MethodOf(const std::string& name) const {
        const auto found = notes_.find(name);
        EXPECT_NE(found, notes_.end()) << "no variant runs " << name;
        if (found == notes_.end()) return {.name = name, .statements = {}, .runs = {}};
        const Notes& notes = found->second;
        const std::set<std::size_t> direct =
            Those(notes.variants, [&](std::size_t variant) { return variants_[variant].method == name; });
        CataloguedMethod method{.name = name, .statements = {}, .runs = notes.runs};
        for (const Notes::Statement& statement : notes.statements) {
            method.statements.push_back(
                {statement.shape, statement.sent,
                 ConditionsOf(statement.variants, direct.empty() ? notes.variants : direct)});
        }
        return method;
    }

    std::set<std::string> Methods() const {
        std::set<std::string> methods;
        for (const auto& [name, notes] : notes_) methods.insert(name);
        return methods;
    }
    const std::set<std::pair<std::string, std::int32_t>>& StoreCalls() const { return storeCalls_; }

private:
    template <typename Wanted>
    static std::set<std::size_t> Those(const std::set<std::size_t>& all, Wanted wanted) {
        std::set<std::size_t> those;
        for (const std::size_t one : all) {
            if (wanted(one)) those.insert(one);
        }
        return those;
    }

    void Note(const Variant& variant) {
        const std::size_t number = variants_.size();
        variants_.push_back(variant);
        notes_[variant.method].variants.insert(number);
        for (const auto& [method, outer] : recorder_.Entered()) {
            notes_[method].variants.insert(number);
            std::vector<std::string>& runs = notes_[outer.empty() ? variant.method : outer].runs;
            const bool isItself = outer.empty() && method == variant.method;
            if (!isItself && std::find(runs.begin(), runs.end(), method) == runs.end()) {
                runs.push_back(method);
            }
        }
        for (const SentStatement& sent : recorder_.Statements()) {
            const std::string& method = sent.method.empty() ? variant.method : sent.method;
            if (method == variant.method || !called_.contains(method)) {
                NoteStatement(notes_[method], sent.sql, number);
            }
        }
        storeCalls_.insert(recorder_.StoreCalls().begin(), recorder_.StoreCalls().end());
    }

    static void NoteStatement(Notes& notes, const std::string& sql, std::size_t variant) {
        const std::string shape = WithPlaceholders(sql);
        for (Notes::Statement& statement : notes.statements) {
            if (statement.shape != shape) continue;
            statement.variants.insert(variant);
            return;
        }
        notes.statements.push_back({shape, sql, {variant}});
    }

    /// What the variants that issue a statement have in common, if that sets them apart from the others; else
    /// the conditions of each.
    std::vector<std::string> ConditionsOf(const std::set<std::size_t>& issuing,
                                          const std::set<std::size_t>& all) const {
        const std::set<std::size_t> quiet = Those(all, [&](std::size_t variant) {
            return !variants_[variant].raises || issuing.contains(variant);
        });
        if (issuing == quiet) return {};
        std::vector<std::string> common;
        for (const std::string& condition : variants_[*issuing.begin()].conditions) {
            if (std::all_of(issuing.begin(), issuing.end(),
                            [&](std::size_t variant) { return Has(variant, condition); })) {
                common.push_back(condition);
            }
        }
        const std::set<std::size_t> described = Those(all, [&](std::size_t variant) {
            return std::all_of(common.begin(), common.end(),
                               [&](const std::string& condition) { return Has(variant, condition); });
        });
        if (described == issuing) return {Joined(common, " and ")};
        std::vector<std::string> each;
        for (const std::size_t variant : issuing) {
            const std::string conditions = Joined(variants_[variant].conditions, " and ");
            if (std::find(each.begin(), each.end(), conditions) == each.end()) each.push_back(conditions);
        }
        const std::set<std::size_t> others =
            Those(quiet, [&](std::size_t variant) { return !issuing.contains(variant); });
        if (each.size() > 2 && others.size() == 1) {
            return {"unless " + Joined(variants_[*others.begin()].conditions, " and ")};
        }
        return each;
    }

    bool Has(std::size_t variant, const std::string& condition) const {
        const std::vector<std::string>& all = variants_[variant].conditions;
        return std::find(all.begin(), all.end(), condition) != all.end();
    }
    static std::string Joined(const std::vector<std::string>& texts, const std::string& by) {
        std::string joined;
        for (const std::string& text : texts) joined += (joined.empty() ? "" : by) + text;
        return joined;
    }

    TemporaryFolder folder_;
    EnvironmentVariable configuration_{"KXJOB_CONFIG", folder_.File("kxjob.conf")};
    std::string seeded_ = folder_.File("seeded.db");
    StatementRecorder recorder_;
    std::set<std::string> called_;  // methods that have variants of their own
    std::vector<Variant> variants_;
    std::map<std::string, Notes> notes_;
    std::set<std::pair<std::string, std::int32_t>> storeCalls_;
};

}  // namespace

Catalogue RecordCatalogue() {
    const std::vector<Family> families = EveryFamily();
    Recording recording(families);
    for (const Family& family : families) {
        for (const Variant& variant : family.variants) recording.Call(variant);
    }
    Catalogue catalogue;
    std::set<std::string> unlisted = recording.Methods();
    for (const Family& family : families) {
        CataloguedFamily catalogued{.title = family.title, .methods = {}};
        for (const std::string& method : family.methods) {
            catalogued.methods.push_back(recording.MethodOf(method));
            unlisted.erase(method);
        }
        catalogue.families.push_back(catalogued);
    }
    EXPECT_TRUE(unlisted.empty()) << *unlisted.begin() << " is in no family";
    catalogue.storeCalls = recording.StoreCalls();
    return catalogue;
}

}  // namespace kxjob::testing_support
