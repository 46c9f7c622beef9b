#include "work/host/item_runner.h"

#include <array>
#include <exception>

#include "kxjob/automation_error.h"
#include "kxjob/caller_texts.h"

namespace kxjob::command {
namespace {

std::string Storable(JobStore& store, const std::string& text) {
    try {
        store.Literal(text);
        return text;
    } catch (const AutomationError& error) {
        return std::string("The error's own text cannot be stored: ") + error.what();
    }
}

}  // namespace

ItemResult RunItem(JobStore& store, Component& component, const std::string& job, const ClaimedItem& item) {
    const StoreConnection& connection = store.Connection();
    ItemResult result;
    result.item = item.guid;
    result.sequence = item.sequence;
    result.start = NowISODateTime();
    try {
        const std::array<Value, 7> arguments{connection.connectionString,
                                             connection.provider,
                                             connection.nameQualifier,
                                             job,
                                             item.guid,
                                             item.identifier,
                                             item.data};
        result.note = component.Call("RunJobItem", arguments).ToJoinedText();
        store.Literal(result.note);  // what cannot be stored fails the item, not the lot
        result.succeeded = true;
    } catch (const std::exception& error) {
        result.note = FailureNote(item.note, Storable(store, error.what()));
    } catch (...) {
        result.note = FailureNote(item.note, "The component raised something that is no error");
    }
    result.end = NowISODateTime();
    return result;
}

}  // namespace kxjob::command
