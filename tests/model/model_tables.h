#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "kxjob/value.h"

namespace kxjob::model {

/// A GUID that the library makes: well-formed and never seen before. Cells of one step with the same number
/// hold the same GUID, those with different numbers different ones.
struct NewGuid {
    int number = 0;
};

/// A time that the library takes: of the right shape, neither before nor after the step.
struct Now {};

/// A failure note: what stood there, the block of the moment, the caller's text.
struct Note {
    std::string before;
    std::string after;
};

/// What a cell must hold. After a step was compared with the store, every cell is a Value.
using Cell = std::variant<Value, NewGuid, Now, Note>;
using Row = std::map<std::string, Cell>;

/// The cell's value; only for cells that have been compared.
const Value& Held(const Row& row, const std::string& column);
bool Holds(const Row& row, const std::string& column, const Value& value);
/// The texts of these columns as values, in their order.
std::vector<Value> Project(const Row& row, const std::vector<std::string>& columns);

struct Table {
    std::string name;
    std::vector<std::string> columns;
    std::vector<Row> rows = {};

    /// A row with these cells, the others NULL.
    void Insert(const Row& cells);
    void ForEach(const std::string& column, const Value& value, const std::function<void(Row&)>& change);
    void Remove(const std::function<bool(const Row&)>& which);
    std::vector<const Row*> Where(const std::function<bool(const Row&)>& which) const;
    bool Has(const std::string& column, const Value& value) const;
};

/// What a store holds: the four tables, and of the stand-ins' ones what the methods read and write.
struct Tables {
    Tables();

    Table job;
    Table jobItem;
    Table jobTask;
    Table jobType;
    Table history;
    bool hasRuntime = false;
    Value kvrFlag = Null{};
    std::map<std::string, std::string> applicationStates = {};

    std::vector<Table*> All() { return {&job, &jobItem, &jobTask, &jobType, &history}; }
    /// The entry that a change of a job leaves in the administration history.
    void WriteHistory(const std::string& action, const std::string& detail);
};

/// Leaves a step with one of these error numbers; what the model has changed by then stays changed.
struct Raised {
    std::vector<std::int32_t> numbers;
};
[[noreturn]] void Raise(std::uint32_t number);
/// A number of the library: 0x80040000 and more.
[[noreturn]] void RaiseOwn(std::uint32_t number);

/// The refusals that the methods share: of a key, of a qualifier, of a text that no store can keep, of a
/// value that has no literal.
void CheckKey(std::string_view text);
void CheckQualifier(std::string_view text);
void CheckStorable(std::string_view text);
/// What a text column holds when the value has been written into it.
Value AsStoredText(const Value& value);

}  // namespace kxjob::model
