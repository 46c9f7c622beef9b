#pragma once

#include <cstdint>
#include <exception>
#include <initializer_list>
#include <memory>
#include <optional>
#include <source_location>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "automation/runtime_error.h"
#include "collaborators/argument.h"
#include "collaborators/this_thread.h"
#include "kxjob/automation_error.h"
#include "kxjob/collection.h"
#include "kxjob/component.h"
#include "kxjob/data_store_provider.h"
#include "kxjob/value.h"

namespace kxjob {

inline constexpr const char* kProject = "Job_83";
inline constexpr const char* kJobHelperClass = "JobHelper";
inline constexpr const char* kDurationTimerClass = "DurationTimer";

/// The provider that methods without a `Provider` argument pass.
inline constexpr DataStoreProvider kDefaultProvider = 2;

class LateObject;

/// What surrounds the body of one running method: it names the method in traces and errors, hands the body
/// its collaborators, knows the line that the body has reached, and deals with the error that ends it.
///
/// Every access takes the place of its caller: that line is reported when the access, or what follows it,
/// fails.
class Frame {
public:
    using Place = std::source_location;

    Frame(const char* className, const char* method, Arguments arguments);
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;
    ~Frame() = default;

    /// Raises the library's own error `number` in the name of the method.
    [[noreturn]] void Raise(std::int32_t number, const std::string& description,
                            Place place = Place::current());
    /// From now on, errors carry this sentence and two line breaks in front of their description; empty: no
    /// more.
    void ExplainErrors(std::string sentence) { explanation_ = std::move(sentence); }
    /// Any object, about to be used at the caller's line: the method's own object, or one made for the call.
    template <typename T>
    T& Use(T& object, Place place = Place::current()) {
        At(place);
        return object;
    }
    /// The same through a reference that may be unset: raises Object not set then.
    template <typename T>
    T& UseObject(const std::shared_ptr<T>& object, Place place = Place::current()) {
        At(place);
        if (object == nullptr) RaiseRuntimeError(error_number::kObjectNotSet);
        return *object;
    }

    void CheckParameter(const std::string& value, const std::string& parameterName,
                        Place place = Place::current());
    std::string FormatValue(const Value& value, Place place = Place::current());
    std::string FormatGuid(const std::string& guid, Place place = Place::current());
    void Execute(const std::string& connectionString, DataStoreProvider provider, const std::string& sql,
                 Place place = Place::current());
    Value Query(const std::string& connectionString, DataStoreProvider provider, const std::string& sql,
                bool allowEmpty, Place place = Place::current());
    void WriteLongText(const std::string& connectionString, DataStoreProvider provider,
                       const std::string& nameQualifier, const std::string& baseTableName,
                       const std::string& keyColumn, const std::string& keyValue,
                       const std::string& valueColumn, const std::string& value,
                       Place place = Place::current());
    void Trace(std::int32_t level, const std::string& message, Place place = Place::current());
    std::string VersionOfApplication(Place place = Place::current());
    std::string NewGuid(Place place = Place::current());
    std::string NullGuid(Place place = Place::current());
    std::string NowISODateTime(Place place = Place::current());
    std::string DurationText(double duration, Place place = Place::current());
    std::int32_t LowerBound(const Value& array, Place place = Place::current());
    std::int32_t UpperBound(const Value& array, Place place = Place::current());
    std::int32_t ElementCount(const Value& array, Place place = Place::current());
    std::int32_t DimensionCount(const Value& array, Place place = Place::current());
    std::string GetScript(Collection& providerOptions, DataStoreProvider provider,
                          const std::string& nameQualifier, const std::string& scriptName,
                          Place place = Place::current());
    void SeedFromTimer(Place place = Place::current());
    float NextRandom(Place place = Place::current());

    /// Through the one ObjectFactory of this call, which is made when it is first needed.
    LateObject CreateVersioned(const std::string& progIdTemplate, Place place = Place::current());
    bool CanCreate(const std::string& progId, Place place = Place::current());
    /// A component by its complete ProgID, without the factory.
    LateObject CreateObject(const std::string& progId, Place place = Place::current());

    std::shared_ptr<ConnectionSettings> NewConnectionSettings(Place place = Place::current());
    std::shared_ptr<SystemFlagReader> NewSystemFlagReader(Place place = Place::current());
    std::shared_ptr<BatchSqlExecutor> NewBatchSqlExecutor(Place place = Place::current());
    std::shared_ptr<EnvironmentInfo> NewEnvironmentInfo(Place place = Place::current());
    std::shared_ptr<KeyedCollection> NewKeyedCollection(Place place = Place::current());

    /// For InFrame only. Hands the error being handled to the error-logging component, which raises it again.
    /// Returns only if that component does.
    void HandlePendingError();
    /// For InFrame only.
    template <typename Result>
    void Leave(const Result& result) {
        if (observer_ == nullptr) return;
        const Value shown = AsValue(result);
        observer_->Leave(method_, &shown, arguments_);
    }
    void LeaveWithoutResult();

private:
    friend class LateObject;

    void At(const Place& place);
    ObjectFactory& Factory();
    AutomationError PendingError() const;
    [[noreturn]] void RaiseOutwards(const AutomationError& error);

    ThreadCollaborators& thread_;
    MethodObserver* observer_;
    const char* className_;
    const char* method_;
    Arguments arguments_;
    std::string explanation_;
    std::shared_ptr<ObjectFactory> factory_;
    std::int32_t line_ = 0;
};

/// A component in the hands of a method body.
class LateObject {
public:
    LateObject(Frame& frame, ComponentRef object) : frame_(&frame), object_(std::move(object)) {}

    Value Get(std::string_view property, Frame::Place place = Frame::Place::current()) const;
    void Let(std::string_view property, const Value& value,
             Frame::Place place = Frame::Place::current()) const;
    Value Call(std::string_view method, std::initializer_list<Value> arguments,
               Frame::Place place = Frame::Place::current()) const;
    /// For keeping the component beyond the call.
    const ComponentRef& Object() const { return object_; }

private:
    Frame* frame_;
    ComponentRef object_;
};

/// Runs the body of a method inside its frame: `arguments` are its published arguments, by name. A body
/// neither catches nor logs errors, and releases what it made by leaving. When the error-logging component
/// does not raise, the result is the default one: empty text, False, Empty.
template <typename Body>
auto InFrameOf(const char* className, const char* method, ArgumentList arguments, Body&& body)
    -> std::invoke_result_t<Body&, Frame&> {
    using Result = std::invoke_result_t<Body&, Frame&>;
    Frame frame(className, method, Arguments(arguments.begin(), arguments.size()));
    if constexpr (std::is_void_v<Result>) {
        try {
            body(frame);
        } catch (...) {
            frame.HandlePendingError();
        }
        frame.LeaveWithoutResult();
    } else {
        Result result{};
        try {
            result = body(frame);
        } catch (...) {
            frame.HandlePendingError();
        }
        frame.Leave(result);
        return result;
    }
}

/// The same for a method of JobHelper.
template <typename Body>
auto InFrame(const char* method, ArgumentList arguments, Body&& body) {
    return InFrameOf(kJobHelperClass, method, arguments, std::forward<Body>(body));
}

}  // namespace kxjob
