#include "model/steps.h"

namespace kxjob::model {
namespace {

/// Gives one column of a job or an item a value, as the worker hosts do.
Step Set(const std::string& name, Table Tables::*table, const std::string& key, const std::string& keyColumn,
         const std::vector<std::pair<std::string, Value>>& cells) {
    return {.name = name,
            .call = [=](JobHelper&, Store& store) -> Value {
                std::string changes;
                for (const auto& [column, value] : cells) {
                    changes += (changes.empty() ? "" : ", ") + column + " = " + store.Literal(value);
                }
                store.Execute("UPDATE " + store.Table((Tables().*table).name) + " SET " + changes +
                              " WHERE " + keyColumn + " = " + store.Literal(key));
                return {};
            },
            .effect = [=](Tables& changed) -> Result {
                (changed.*table).ForEach(keyColumn, key, [&](Row& row) {
                    for (const auto& [column, value] : cells) row[column] = value;
                });
                return {};
            }};
}

/// The key of some row; of none, when there is none.
std::string SomeKey(Draw& draw, const Table& table, const std::string& column) {
    return table.rows.empty() ? "none" : Held(table.rows[draw.Below(table.rows.size())], column).Text();
}

Step GrantLock(Draw& draw, const Tables& tables) {
    const std::vector<Value> locks = {"{00000000-0000-4000-8000-0000000000D1}",
                                      "{00000000-0000-4000-8000-0000000000D2}", "", Null{}};
    return Set("grant a lock", &Tables::job, SomeKey(draw, tables.job, "jobguid"), "jobguid",
               {{"jobeditorlockguid", locks[draw.Below(locks.size())]}, {"lockduration", Value(30.5)}});
}

Step CountProgress(Draw& draw, const Tables& tables) {
    return Set("count progress", &Tables::job, SomeKey(draw, tables.job, "jobguid"), "jobguid",
               {{"nextjobitem", Value(draw.Number())},
                {"succeededitemcount", Value(7)},
                {"faileditemcount", Value(draw.Number())},
                {"startdt", Value("2026-03-01T09:30:15.123Z")},
                {"lastcompletiondt", Value("2026-03-01T09:31:00.000Z")},
                {"sumoftimeincsq", Value(2.5)}});
}

Step NoteOnJob(Draw& draw, const Tables& tables) {
    const std::vector<Value> notes = {"   ", "", Null{}, "an old note ", " \t", "\r\n"};
    return Set("note on a job", &Tables::job, SomeKey(draw, tables.job, "jobguid"), "jobguid",
               {{"failurenote", notes[draw.Below(notes.size())]}});
}

Step NoteOnItem(Draw& draw, const Tables& tables) {
    const std::vector<Value> notes = {"  ", "", Null{}, " an old note"};
    return Set("note on an item", &Tables::jobItem, SomeKey(draw, tables.jobItem, "jobitemguid"),
               "jobitemguid", {{"failurenote", notes[draw.Below(notes.size())]}});
}

Step AddType(Draw& draw, const Tables& tables) {
    const std::string type = draw.JobTypeId();
    const std::vector<Value> components = {"kxTimer_83.Timer", "Nobody_83.Nothing", Null{}};
    const Value component = components[draw.Below(components.size())];
    const bool isThere = tables.jobType.Has("jobtypeid", type);
    try {
        CheckStorable(type);
    } catch (const Raised&) {
        return AddType(draw, tables);
    }
    return {.name = isThere ? "remove a type" : "add a type",
            .call = [=](JobHelper&, Store& store) -> Value {
                const std::string table = store.Table("JobType");
                if (isThere) {
                    store.Execute("DELETE FROM " + table + " WHERE jobtypeid = " + store.Literal(type));
                } else {
                    store.Execute("INSERT INTO " + table + " (jobtypeid, implprogid) VALUES (" +
                                  store.Literal(type) + ", " + store.Literal(component) + ")");
                }
                return {};
            },
            .effect = [=](Tables& changed) -> Result {
                if (isThere) {
                    changed.jobType.Remove([&](const Row& row) { return Holds(row, "jobtypeid", type); });
                } else {
                    changed.jobType.Insert({{"jobtypeid", Value(type)}, {"implprogid", component}});
                }
                return {};
            }};
}

/// The flag that stops the creation of jobs: cleared more often than set, so that jobs are created.
Step SetFlag(Draw& draw, const Tables& /*tables*/) {
    const std::vector<Value> flags = {Null{}, "", Null{}, "set"};
    const Value flag = flags[draw.Below(flags.size())];
    const bool hasRuntime = draw.Truth();
    return {.name = "set the flag",
            .call = [=](JobHelper&, Store& store) -> Value {
                store.Execute("DELETE FROM kx_systemflag");
                store.Execute("INSERT INTO kx_systemflag (flagname, flagvalue) VALUES ('KVR_TRANSACTION', " +
                              store.Literal(flag) + ")");
                store.Execute("DELETE FROM kx_subsystem");
                store.Execute("INSERT INTO kx_subsystem (subsystemid) VALUES ('REPORTING')");
                if (hasRuntime) store.Execute("INSERT INTO kx_subsystem (subsystemid) VALUES ('RUNTIME')");
                return {};
            },
            .effect = [=](Tables& changed) -> Result {
                changed.kvrFlag = flag;
                changed.hasRuntime = hasRuntime;
                return {};
            }};
}

Step SetState(Draw& draw, const Tables& /*tables*/) {
    const std::string state = draw.Truth() ? "PRODUCTION" : "DEVELOPMENT";
    const std::string guid = state == "PRODUCTION" ? kProductionState : kDevelopmentState;
    const bool isThere = draw.Truth();
    return {.name = "set an application state",
            .call = [=](JobHelper&, Store& store) -> Value {
                store.Execute("DELETE FROM kx_applicationstate WHERE stateid = '" + state + "'");
                if (isThere) {
                    store.Execute("INSERT INTO kx_applicationstate (stateid, stateguid) VALUES ('" + state +
                                  "', '" + guid + "')");
                }
                return {};
            },
            .effect = [=](Tables& changed) -> Result {
                changed.applicationStates.erase(state);
                if (isThere) changed.applicationStates[state] = guid;
                return {};
            }};
}

}  // namespace

std::vector<StepKind> OutsideSteps() {
    return {
        {"grant a lock", 4, GrantLock},
        {"count progress", 1, CountProgress},
        {"note on a job", 3, NoteOnJob},
        {"note on an item", 1, NoteOnItem},
        {"add or remove a type", 1, AddType},
        {"set the flag", 1, SetFlag},
        {"set an application state", 1, SetState},
    };
}

}  // namespace kxjob::model
