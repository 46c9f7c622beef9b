#include "frame/frame.h"

#include <array>
#include <new>

#include "frame/application_object.h"
#include "frame/error_object.h"

namespace kxjob {
namespace {

/// DataAccess knows more modes; the library uses this one.
constexpr std::int32_t kMode = 1;

}  // namespace

Frame::Frame(const char* className, const char* method, Arguments arguments)
    : thread_(ThisThread()),
      observer_(thread_.Observer()),
      className_(className),
      method_(method),
      arguments_(arguments) {
    if (observer_ != nullptr) observer_->Enter(className_, method_, arguments_);
}

void Frame::At(const Place& place) {
    line_ = static_cast<std::int32_t>(place.line());
    if (observer_ != nullptr) observer_->At(line_);
}

void Frame::Raise(std::int32_t number, const std::string& description, Place place) {
    At(place);
    throw AutomationError(static_cast<std::int32_t>(kObjectErrorBase + static_cast<std::uint32_t>(number)),
                          std::string(kProject) + "." + className_ + "." + method_, description, line_);
}

void Frame::CheckParameter(const std::string& value, const std::string& parameterName, Place place) {
    At(place);
    thread_.Guard().CheckParameter(value, parameterName);
}

std::string Frame::FormatValue(const Value& value, Place place) {
    At(place);
    return thread_.Formatter().FormatValue(value);
}

std::string Frame::FormatGuid(const std::string& guid, Place place) {
    At(place);
    return thread_.Formatter().FormatGuid(guid);
}

void Frame::Execute(const std::string& connectionString, DataStoreProvider provider, const std::string& sql,
                    Place place) {
    At(place);
    thread_.Data().Execute(connectionString, provider, kMode, sql);
}

Value Frame::Query(const std::string& connectionString, DataStoreProvider provider, const std::string& sql,
                   bool allowEmpty, Place place) {
    At(place);
    return thread_.Data().Query(connectionString, provider, kMode, sql, allowEmpty);
}

void Frame::WriteLongText(const std::string& connectionString, DataStoreProvider provider,
                          const std::string& nameQualifier, const std::string& baseTableName,
                          const std::string& keyColumn, const std::string& keyValue,
                          const std::string& valueColumn, const std::string& value, Place place) {
    At(place);
    LongTextOutputs ignored;
    thread_.Data().WriteLongText(connectionString, provider, kMode, nameQualifier, baseTableName, keyColumn,
                                 keyValue, valueColumn, value, ignored);
}

void Frame::Trace(std::int32_t level, const std::string& message, Place place) {
    At(place);
    thread_.Log().Write(message, level, kProject, className_, method_);
}

std::string Frame::VersionOfApplication(Place place) {
    At(place);
    return thread_.Log().VersionOf(std::make_shared<ApplicationObject>());
}

std::string Frame::NewGuid(Place place) {
    At(place);
    return thread_.Guids().NewGuid();
}

std::string Frame::NullGuid(Place place) {
    At(place);
    return thread_.Guids().NullGuid();
}

std::string Frame::NowISODateTime(Place place) {
    At(place);
    return thread_.Times().NowISODateTime();
}

std::string Frame::DurationText(double duration, Place place) {
    At(place);
    return thread_.Times().DurationText(duration);
}

std::int32_t Frame::LowerBound(const Value& array, Place place) {
    At(place);
    return thread_.Arrays().LowerBound(array);
}

std::int32_t Frame::UpperBound(const Value& array, Place place) {
    At(place);
    return thread_.Arrays().UpperBound(array);
}

std::int32_t Frame::ElementCount(const Value& array, Place place) {
    At(place);
    return thread_.Arrays().ElementCount(array);
}

std::int32_t Frame::DimensionCount(const Value& array, Place place) {
    At(place);
    return thread_.Arrays().DimensionCount(array);
}

std::string Frame::GetScript(Collection& providerOptions, DataStoreProvider provider,
                             const std::string& nameQualifier, const std::string& scriptName, Place place) {
    At(place);
    return thread_.Scripts().GetScript(providerOptions, provider, nameQualifier, scriptName, true);
}

void Frame::SeedFromTimer(Place place) {
    At(place);
    thread_.Random().SeedFromTimer();
}

float Frame::NextRandom(Place place) {
    At(place);
    return thread_.Random().Next();
}

ObjectFactory& Frame::Factory() {
    if (factory_ == nullptr) factory_ = thread_.Factory().MakeObjectFactory();
    return *factory_;
}

LateObject Frame::CreateVersioned(const std::string& progIdTemplate, Place place) {
    At(place);
    return {*this, Factory().CreateVersioned(progIdTemplate)};
}

bool Frame::CanCreate(const std::string& progId, Place place) {
    At(place);
    return Factory().CanCreate(progId);
}

LateObject Frame::CreateObject(const std::string& progId, Place place) {
    At(place);
    return {*this, thread_.Objects().CreateObject(progId)};
}

std::shared_ptr<ConnectionSettings> Frame::NewConnectionSettings(Place place) {
    At(place);
    return thread_.Factory().MakeConnectionSettings();
}

std::shared_ptr<SystemFlagReader> Frame::NewSystemFlagReader(Place place) {
    At(place);
    return thread_.Factory().MakeSystemFlagReader();
}

std::shared_ptr<BatchSqlExecutor> Frame::NewBatchSqlExecutor(Place place) {
    At(place);
    return thread_.Factory().MakeBatchSqlExecutor();
}

std::shared_ptr<EnvironmentInfo> Frame::NewEnvironmentInfo(Place place) {
    At(place);
    return thread_.Factory().MakeEnvironmentInfo();
}

std::shared_ptr<KeyedCollection> Frame::NewKeyedCollection(Place place) {
    At(place);
    return thread_.Factory().MakeKeyedCollection();
}

void Frame::HandlePendingError() {
    const AutomationError pending = PendingError();
    factory_.reset();
    ComponentRef debugTools;
    try {
        debugTools = thread_.Objects().CreateObject("DebugTools_83.Helper");
    } catch (...) {
        RaiseOutwards(pending);  // nothing can log it: what matters is that the caller gets it
    }
    try {
        const std::array<Value, 6> arguments{
            ComponentRef(std::make_shared<ErrorObject>(pending)),
            ComponentRef(std::make_shared<ApplicationObject>()),
            line_,
            kProject,
            className_,
            method_,
        };
        debugTools->Call("LogAndReRaiseVBError", arguments);
    } catch (...) {
        explanation_.clear();  // it is in the pending error by now
        RaiseOutwards(PendingError());
    }
}

void Frame::LeaveWithoutResult() {
    if (observer_ != nullptr) observer_->Leave(method_, nullptr, arguments_);
}

AutomationError Frame::PendingError() const {
    const auto explained = [this](const std::string& description) {
        return explanation_.empty() ? description : explanation_ + "\r\n\r\n" + description;
    };
    try {
        throw;
    } catch (const AutomationError& error) {
        return {error.Number(), error.Source(), explained(error.Description()),
                error.Line() == 0 ? line_ : error.Line()};
    } catch (const std::bad_alloc&) {
        return {error_number::kOutOfMemory, kProject, explained("Out of memory"), line_};
    } catch (const std::exception& exception) {
        return {error_number::kInternal, kProject,
                explained(std::string("Internal error: ") + exception.what()), line_};
    } catch (...) {
        return {error_number::kInternal, kProject, explained("Internal error"), line_};
    }
}

void Frame::RaiseOutwards(const AutomationError& error) {
    if (observer_ != nullptr) observer_->Raise(method_, error);
    throw error;
}

Value LateObject::Get(std::string_view property, Frame::Place place) const {
    return frame_->UseObject(object_, place).Get(property);
}

void LateObject::Let(std::string_view property, const Value& value, Frame::Place place) const {
    frame_->UseObject(object_, place).Let(property, value);
}

Value LateObject::Call(std::string_view method, std::initializer_list<Value> arguments,
                       Frame::Place place) const {
    return frame_->UseObject(object_, place).Call(method, std::span(arguments.begin(), arguments.size()));
}

}  // namespace kxjob
