#include "journal/recorder.h"

#include "journal/connection_secrets.h"

namespace kxjob {
namespace {

constexpr std::string_view kConnectionArgument = "ConnectionString";

std::pair<std::string, Value> Named(const Argument& argument) {
    const bool mayHoldSecret = argument.Name() == kConnectionArgument;
    return {argument.Name(), mayHoldSecret ? ValueWithoutSecrets(argument.Read()) : argument.Read()};
}

}  // namespace

Recorder::Recorder(JournalSink& sink) : sink_(&sink), methods_(1) {}

void Recorder::Enter(std::string_view /*className*/, std::string_view method, Arguments arguments) {
    methods_.push_back({std::string(method)});
    JournalEvent event;
    event.kind = JournalEvent::Kind::Enter;
    event.method = method;
    for (const Argument& argument : arguments) event.named.push_back(Named(argument));
    Write(event);
}

void Recorder::At(std::int32_t line) {
    methods_.back().line = line;
}

void Recorder::Leave(std::string_view method, const Value* result, Arguments arguments) {
    LeaveMethod();
    JournalEvent event;
    event.kind = JournalEvent::Kind::Leave;
    event.method = method;
    if (result != nullptr) event.result = *result;
    for (const Argument& argument : arguments) {
        if (argument.IsByReference()) event.named.push_back(Named(argument));
    }
    Write(event);
}

void Recorder::Raise(std::string_view method, const AutomationError& error) {
    LeaveMethod();
    JournalEvent event;
    event.kind = JournalEvent::Kind::Raise;
    event.method = method;
    event.error = error;
    Write(event);
}

JournalEvent Recorder::CallEvent(std::string object, std::string operation,
                                 std::vector<Value> arguments) const {
    JournalEvent event;
    event.kind = JournalEvent::Kind::Call;
    event.method = methods_.back().name;
    event.line = methods_.back().line;
    event.object = std::move(object);
    event.operation = std::move(operation);
    event.arguments = std::move(arguments);
    return event;
}

void Recorder::Write(const JournalEvent& event) {
    if (sink_ != nullptr) sink_->Write(event);
}

void Recorder::WriteFailed(JournalEvent& event) {
    try {
        throw;
    } catch (const AutomationError& error) {
        event.error = error;
    } catch (const std::exception& exception) {
        event.error = AutomationError(error_number::kInternal, event.object, exception.what());
    }
    Write(event);
}

void Recorder::LeaveMethod() {
    if (methods_.size() > 1) methods_.pop_back();
}

}  // namespace kxjob
