#include "kxjob/array.h"
#include "model/removal.h"
#include "model/steps.h"

namespace kxjob::model {
namespace {

std::string CreationDetail(const std::string& type, const std::string& job, const std::string& state,
                           std::int32_t count) {
    return "<job><jobtypeid>" + type + "</jobtypeid><jobguid>" + job + "</jobguid><appstateguid>" + state +
           "</appstateguid><totalitemcount>" + std::to_string(count) + "</totalitemcount></job>";
}

/// A place without the small tables has no flag.
void CheckNoKvr(const Tables& tables, const Address& at) {
    if (at.qualifier != kQualifier) return;
    const bool isSet = !tables.kvrFlag.IsNull() && !tables.kvrFlag.Text().empty();
    if (tables.hasRuntime && isSet) RaiseOwn(854);
}

/// A filter that is empty filters nothing.
bool Passes(const Row& row, const std::string& column, const std::string& filter) {
    return filter.empty() || Holds(row, column, filter);
}

Step CreateJob(Draw& draw, const Tables& /*tables*/) {
    const Address given = draw.Place();
    const Address at = draw.Configured(given);
    const std::string job = draw.NewJobGuid();
    const std::string type = draw.JobTypeId();
    const std::string description = draw.Text();
    const std::string state = draw.ApplicationState();
    const std::string parameters = draw.Text();
    const std::int32_t count = draw.ItemCount();
    return {
        .name = "CreateJob",
        .call = [=](JobHelper& jobs, Store&) -> Value {
            jobs.CreateJob(given.connection, given.provider, given.qualifier, job, type, description, state,
                           parameters, count);
            return {};
        },
        .effect = [=](Tables& changed) -> Result {
            CheckKey(job);
            CheckKey(type);
            CheckKey(state);
            CheckQualifier(at.qualifier);
            if (count < 1) RaiseOwn(1433);
            CheckNoKvr(changed, at);
            CheckStorable(type);
            at.CheckReachable();
            if (changed.jobType.Where([&](const Row& row) { return Passes(row, "jobtypeid", type); }).empty())
                RaiseOwn(1312);
            CheckStorable(state);
            RemoveJobs(changed, [&](const Row& row) {
                return Passes(row, "jobtypeid", type) && Passes(row, "appstateguid", state);
            });
            CheckStorable(job);
            CheckStorable(description);
            if (changed.job.Has("jobguid", job)) RaiseOwn(703);  // of another type or state
            changed.job.Insert({{"jobguid", Value(job)},
                                {"jobtypeid", Value(type)},
                                {"description", Value(description)},
                                {"appstateguid", Value(state)},
                                {"jobstateid", Value("CREATING")},
                                {"totalitemcount", Value(count)},
                                {"nextjobitem", Value(0)},
                                {"succeededitemcount", Value(0)},
                                {"faileditemcount", Value(0)},
                                {"sumoftimeincsq", Value(0.0)}});
            CheckStorable(parameters);
            if (!parameters.empty()) {
                changed.job.ForEach("jobguid", job, [&](Row& row) { row["parameters"] = Value(parameters); });
            }
            changed.WriteHistory("JOB_CREATE", CreationDetail(type, job, state, count));
            return {};
        }};
}

Step CreateJobItem(Draw& draw, const Tables& tables) {
    const Address given = draw.Place();
    const Address at = draw.Configured(given);
    const std::string job = draw.JobGuid(tables);
    const std::string identifier = draw.Text();
    const std::string data = draw.Text();
    const std::int32_t sequence = draw.Number();
    return {.name = "CreateJobItem",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                return jobs.CreateJobItem(given.connection, given.provider, given.qualifier, job, identifier,
                                          data, sequence);
            },
            .effect = [=](Tables& changed) -> Result {
                CheckQualifier(at.qualifier);
                CheckKey(job);
                CheckStorable(job);
                CheckStorable(identifier);
                at.CheckReachable();
                at.CheckShort(identifier);
                changed.jobItem.Insert({{"jobitemguid", NewGuid{1}},
                                        {"jobguid", Value(job)},
                                        {"identifier", Value(identifier)},
                                        {"sequence", Value(sequence)}});
                CheckStorable(data);  // the row stays without its data
                changed.jobItem.rows.back()["data"] = Value(data);
                return NewGuid{1};
            }};
}

/// What CreateSimpleJobItems may be given: arrays of few elements and of more than a batch, from 0 and from
/// 1, and what is no list.
Value Identifiers(Draw& draw) {
    const std::size_t kind = draw.Below(16);
    if (kind == 15) return draw.Text();
    if (kind == 14) return Array({{0, 2}, {0, 2}});
    if (kind == 13) return {};
    std::vector<Value> items;
    const std::size_t count = kind == 12 ? 98 + draw.Below(5) : draw.Below(4);
    for (std::size_t i = 0; i < count; ++i) items.emplace_back(std::to_string(i));
    if (kind != 0) items.push_back(draw.Variant());
    return Array::List(items, kind % 2 == 0 ? 0 : 1);
}

Step CreateSimpleJobItems(Draw& draw, const Tables& tables) {
    constexpr std::size_t kBatch = 100;
    const Address at = draw.Place();
    const std::string job = draw.JobGuid(tables);
    const Value identifiers = Identifiers(draw);
    return {.name = "CreateSimpleJobItems",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                jobs.CreateSimpleJobItems(at.connection, at.provider, at.qualifier, job, identifiers);
                return {};
            },
            .effect = [=](Tables& changed) -> Result {
                CheckQualifier(at.qualifier);
                CheckKey(job);
                if (!identifiers.IsArray()) RaiseOwn(749);
                if (identifiers.General().Dimensions().size() > 1) RaiseOwn(750);
                CheckStorable(job);
                std::vector<Row> batch;
                int number = 0;
                const auto send = [&] {
                    if (!batch.empty()) at.CheckReachable();
                    // A batch is stored whole or not at all.
                    for (const Row& row : batch) at.CheckShort(Held(row, "identifier"));
                    for (const Row& row : batch) changed.jobItem.Insert(row);
                    batch.clear();
                };
                for (const Value& identifier : identifiers.General().Elements()) {
                    batch.push_back({{"jobitemguid", NewGuid{number}},
                                     {"jobguid", Value(job)},
                                     {"identifier", AsStoredText(identifier)},
                                     {"sequence", Value(std::int32_t{number})}});
                    ++number;
                    if (batch.size() == kBatch) send();
                }
                send();
                return {};
            }};
}

}  // namespace

std::vector<StepKind> LifecycleSteps() {
    return {
        {"CreateJob", 9, CreateJob},
        {"CreateJobItem", 5, CreateJobItem},
        {"CreateSimpleJobItems", 4, CreateSimpleJobItems},
    };
}

}  // namespace kxjob::model
