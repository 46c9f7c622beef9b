#pragma once

#include <istream>
#include <optional>
#include <string>
#include <vector>

#include "kxjob/store.h"

namespace kxjob::command {

/// An item that is to be created.
struct NewItem {
    std::string identifier;
    std::optional<std::string> data;
};

/// How a line of input names an item.
enum class ItemFormat {
    kByFirstCharacter,  // JSON Lines when the input begins with "{", unless that begins a GUID
    kLines,             // the line is the identifier
    kJsonLines,         // {"identifier":"...","data":"..."}, the data optional
};

/// The items of an input, one a line; empty lines are skipped. All of it is read and checked: raises
/// UsageError, with the number of the line, for a line that is no item or holds text that no store can keep.
std::vector<NewItem> ReadItemLines(std::istream& input, ItemFormat format, Store& store);

/// The same for identifiers that stand on the command line.
std::vector<NewItem> ItemsOf(const std::vector<std::string>& identifiers, Store& store);

}  // namespace kxjob::command
