#pragma once

#include "kxjob/component.h"
#include "work/protocol/item_lots.h"
#include "work/protocol/item_results.h"

namespace kxjob::command {

/// Does one item by its component. Whatever the component raises fails the item, with a failure note; a text
/// that it gives back becomes the item's note.
ItemResult RunItem(JobStore& store, Component& component, const std::string& job, const ClaimedItem& item);

}  // namespace kxjob::command
