#include "support/method_plan.h"

#include <nlohmann/json.hpp>

#include "argument_kinds.h"
#include "kxjob/automation_error.h"
#include "kxjob/job_helper.h"
#include "support/fuzz_store.h"
#include "usage_error.h"

namespace kxjob::fuzz {
namespace {

bool IsText(const command::MethodArgument& argument) {
    const bool isOfStore = argument.name == "ConnectionString" || argument.name == "NameQualifier" ||
                           argument.name == "NameQualfier";  // sic
    return !isOfStore && argument.kind.starts_with("TEXT");
}

std::string Given(const MethodPlan& plan, const command::MethodArgument& argument) {
    if (argument.name == "ConnectionString") return FuzzStore::Instance().ConnectionString();
    if (argument.name.starts_with("NameQual")) return plan.qualifier;
    if (argument.name == "Provider") return "5";
    if (argument.kind == command::kKindName<Collection>) return "{}";
    if (!IsText(argument)) return "1";
    const std::string& text = plan.texts.at(argument.name);
    if (argument.name == "IdentifierGUIDs") return nlohmann::json::array({text}).dump();
    return text;
}

/// What looks like JSON would be read as such.
std::string AsText(const command::MethodArgument& argument, const std::string& text) {
    const bool mayBeJson =
        argument.kind != command::kKindName<std::string> && argument.name != "IdentifierGUIDs";
    return mayBeJson && (text.starts_with('[') || text.starts_with('{')) ? "x" + text : text;
}

}  // namespace

MethodPlan PlanOf(std::size_t number, const std::vector<std::string>& texts) {
    MethodPlan plan;
    const auto methods = command::Methods();
    plan.method = &methods[number % methods.size()];
    std::size_t next = 0;
    const auto take = [&] { return next < texts.size() ? texts[next++] : std::string(); };
    plan.texts[""] = take();
    for (const command::MethodArgument& argument : plan.method->arguments) {
        if (IsText(argument)) plan.texts[argument.name] = AsText(argument, take());
    }
    return plan;
}

std::map<std::string, std::string> MakeHarmless(MethodPlan& plan) {
    std::map<std::string, std::string> harmlessOf;
    std::map<std::string, std::string> originals;
    for (auto& [name, text] : plan.texts) {
        if (text.empty()) continue;
        const auto [place, isNew] =
            harmlessOf.try_emplace(text, "q" + std::to_string(harmlessOf.size()) + "harmless");
        if (isNew) originals[place->second] = text;
        text = place->second;
    }
    return originals;
}

void Plant(const MethodPlan& plan) {
    FuzzStore& store = FuzzStore::Instance();
    store.Clear();
    const auto text = [&](const char* name, const char* other = "") {
        auto found = plan.texts.find(name);
        if (found == plan.texts.end()) found = plan.texts.find(other);
        return found == plan.texts.end() ? plan.texts.at("") : found->second;
    };
    const std::string job = text("JobGUID", "GUID");
    const std::string type = text("JobTypeID");
    const std::string state = text("ApplicationStateGUID");
    const std::string task = text("JobTaskGUID");
    store.Insert("job", {{"jobguid", job},
                         {"jobtypeid", type},
                         {"appstateguid", state},
                         {"jobstateid", "RUNNING"},
                         {"parameters", "p"},
                         {"jobeditorlockguid", text("OldLockGUID")}});
    store.Insert(
        "JobItem",
        {{"jobitemguid", text("JobItemGUID")}, {"jobguid", job}, {"sequence", "1"}, {"jobtaskguid", task}});
    store.Insert("jobtask", {{"jobtaskguid", task}, {"jobguid", job}, {"jobtaskstateid", "RUNNING"}});
    store.Insert("JobType", {{"jobtypeid", type}, {"implprogid", "kxTimer_83.Timer"}});
    store.Insert("applicationstate", {{"stateid", "PRODUCTION"}, {"stateguid", text("") + "p"}});
    store.Insert("applicationstate", {{"stateid", "DEVELOPMENT"}, {"stateguid", text("") + "d"}});
}

std::optional<std::int32_t> Carry(const MethodPlan& plan) {
    command::GivenArguments given;
    try {
        for (const command::MethodArgument& argument : plan.method->arguments) {
            given[argument.name] = Given(plan, argument);
        }
        const command::PreparedCall call = plan.method->prepare(given);
        JobHelper helper;
        static_cast<void>(call(helper));
        return 0;
    } catch (const AutomationError& error) {
        return error.Number();
    } catch (const command::UsageError&) {
        return {};
    } catch (const nlohmann::json::exception&) {  // of a list's element that is no UTF-8
        return {};
    }
}

}  // namespace kxjob::fuzz
