#include "model/model_tables.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "kxjob/automation_error.h"

namespace kxjob::model {

const Value& Held(const Row& row, const std::string& column) {
    return std::get<Value>(row.at(column));
}

bool Holds(const Row& row, const std::string& column, const Value& value) {
    return Held(row, column) == value;
}

std::vector<Value> Project(const Row& row, const std::vector<std::string>& columns) {
    std::vector<Value> cells;
    for (const std::string& column : columns) cells.push_back(Held(row, column));
    return cells;
}

void Table::Insert(const Row& cells) {
    Row row = cells;
    for (const std::string& column : columns) row.try_emplace(column, Value(Null{}));
    rows.push_back(row);
}

void Table::ForEach(const std::string& column, const Value& value, const std::function<void(Row&)>& change) {
    for (Row& row : rows) {
        if (Holds(row, column, value)) change(row);
    }
}

void Table::Remove(const std::function<bool(const Row&)>& which) {
    std::erase_if(rows, which);
}

std::vector<const Row*> Table::Where(const std::function<bool(const Row&)>& which) const {
    std::vector<const Row*> found;
    for (const Row& row : rows) {
        if (which(row)) found.push_back(&row);
    }
    return found;
}

bool Table::Has(const std::string& column, const Value& value) const {
    return std::any_of(rows.begin(), rows.end(), [&](const Row& row) { return Holds(row, column, value); });
}

Tables::Tables()
    : job{"job",
          {"jobguid", "jobtypeid", "description", "parameters", "appstateguid", "jobstateid", "nextjobitem",
           "totalitemcount", "succeededitemcount", "faileditemcount", "startdt", "lastcompletiondt",
           "sumoftimeincsq", "failurenote", "jobeditorlockguid", "lockduration"}},
      jobItem{"JobItem",
              {"jobitemguid", "jobguid", "identifier", "sequence", "data", "jobitemstateid", "startdt",
               "enddt", "failurenote", "jobtaskguid"}},
      jobTask{"jobtask",
              {"jobtaskguid", "description", "jobguid", "usercontext", "machine", "processid", "threadid",
               "startdt", "enddt", "jobtaskstateid", "lastjobitem", "command", "lockguid"}},
      jobType{"JobType", {"jobtypeid", "description", "implprogid", "notificationprogid"}},
      history{"adminhistory", {"actioncode", "detail"}} {}

void Tables::WriteHistory(const std::string& action, const std::string& detail) {
    history.Insert({{"actioncode", Value(action)}, {"detail", Value(detail)}});
}

void Raise(std::uint32_t number) {
    throw Raised{{static_cast<std::int32_t>(number)}};
}

void RaiseOwn(std::uint32_t number) {
    Raise(0x80040000U + number);
}

void CheckKey(std::string_view text) {
    for (const std::string_view piece : {"'", ";", "--", "/*", "*/"}) {
        if (text.find(piece) != std::string_view::npos) RaiseOwn(701);
    }
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        if (code < 0x20 || code == 0x7F) RaiseOwn(701);
    }
}

/// Of names the sequences use plain ones and refused ones only.
void CheckQualifier(std::string_view text) {
    CheckKey(text);
    for (const char character : text) {
        const bool isPlain = std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '_';
        if (!isPlain) RaiseOwn(701);
    }
}

/// The flaws that the sequences use: NUL, bytes that are no UTF-8, a surrogate as three bytes.
void CheckStorable(std::string_view text) {
    using namespace std::string_view_literals;
    for (const std::string_view flaw : {"\0"sv, "\xFF"sv, "\xC0"sv, "\xED\xA0"sv}) {
        if (text.find(flaw) != std::string_view::npos) RaiseOwn(706);
    }
}

Value AsStoredText(const Value& value) {
    if (value.IsEmpty() || value.IsNull()) return Null{};
    if (value.IsBoolean()) return value == Value(true) ? "1" : "0";
    if (value.IsArray() || value.IsObject()) Raise(0x800A000DU);
    if (value.IsText()) CheckStorable(value.Text());
    return value.ToText();
}

}  // namespace kxjob::model
