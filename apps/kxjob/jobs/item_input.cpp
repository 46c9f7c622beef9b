#include "jobs/item_input.h"

#include <string_view>
#include <utility>

#include "kxjob/automation_error.h"
#include "records/guid_text.h"
#include "usage_error.h"
#include "value_json.h"

namespace kxjob::command {
namespace {

constexpr const char* kBlanks = " \t";

bool BeginsJsonLines(const std::string& firstLine) {
    const std::size_t start = firstLine.find_first_not_of(kBlanks);
    if (start == std::string::npos || firstLine[start] != '{') return false;
    const std::size_t end = firstLine.find_last_not_of(kBlanks);
    return !IsGuid(std::string_view(firstLine).substr(start, end + 1 - start));
}

std::string TextMember(const Json& object, const char* name) {
    const Json& member = object.at(name);
    if (!member.is_string()) throw UsageError(std::string("\"") + name + "\" must be a text.");
    return member.get<std::string>();
}

NewItem ItemOfJson(const std::string& line) {
    const Json object = ParseJson(line);
    if (!object.is_object()) throw UsageError("it must be a JSON object.");
    for (const auto& [name, ignored] : object.items()) {
        if (name != "identifier" && name != "data") {
            throw UsageError('"' + name + R"(" is neither "identifier" nor "data".)");
        }
    }
    if (!object.contains("identifier")) throw UsageError("it has no \"identifier\".");
    NewItem item{.identifier = TextMember(object, "identifier"), .data = {}};
    if (object.contains("data")) item.data = TextMember(object, "data");
    return item;
}

void RequireStorable(const NewItem& item, Store& store) {
    if (item.identifier.empty()) throw UsageError("the identifier is empty.");
    try {
        store.Literal(item.identifier);
        store.Literal(item.data.value_or(""));
    } catch (const AutomationError& error) {
        throw UsageError(error.Description() + ".");
    }
}

/// Takes the mark off that some editors write ahead of UTF-8 text.
void DropByteOrderMark(std::string& line) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    if (line.starts_with(kMark)) line.erase(0, kMark.size());
}

}  // namespace

std::vector<NewItem> ReadItemLines(std::istream& input, ItemFormat format, Store& store) {
    std::vector<NewItem> items;
    std::string line;
    for (std::size_t number = 1; std::getline(input, line); ++number) {
        if (number == 1) DropByteOrderMark(line);
        if (line.ends_with('\r')) line.pop_back();
        if (line.find_first_not_of(kBlanks) == std::string::npos) continue;
        if (format == ItemFormat::kByFirstCharacter) {
            format = BeginsJsonLines(line) ? ItemFormat::kJsonLines : ItemFormat::kLines;
        }
        try {
            NewItem item =
                format == ItemFormat::kJsonLines ? ItemOfJson(line) : NewItem{.identifier = line, .data = {}};
            RequireStorable(item, store);
            items.push_back(std::move(item));
        } catch (const UsageError& error) {
            throw UsageError("Line " + std::to_string(number) + " is no item: " + error.what());
        }
    }
    if (input.bad()) throw UsageError("The items cannot be read to their end.");
    return items;
}

std::vector<NewItem> ItemsOf(const std::vector<std::string>& identifiers, Store& store) {
    std::vector<NewItem> items;
    for (const std::string& identifier : identifiers) {
        try {
            RequireStorable(items.emplace_back(NewItem{.identifier = identifier, .data = {}}), store);
        } catch (const UsageError& error) {
            throw UsageError("Item " + std::to_string(items.size()) + " is no item: " + error.what());
        }
    }
    return items;
}

}  // namespace kxjob::command
