#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "collaborators/argument.h"
#include "journal/recorder.h"

namespace kxjob {

/// How a journal shows what a call gave back.
struct AsItIs {
    template <typename Result>
    Value operator()(const Result& result) const {
        return AsValue(result);
    }
    Value operator()(float number) const { return static_cast<double>(number); }
};

/// A collaborator whose operations are forwarded to another one of its kind, each as one recorded call.
template <typename Interface>
class Recorded : public Interface {
public:
    Recorded(std::shared_ptr<Recorder> recorder, std::shared_ptr<Interface> inner)
        : recorder_(std::move(recorder)), inner_(std::move(inner)) {}

protected:
    /// Forwards an operation whose arguments are shown as they are.
    template <typename Result, typename... Parameters, typename... Given>
    Result Forward(const char* object, const char* operation, Result (Interface::*member)(Parameters...),
                   Given&&... given) {
        return Record(object, operation, {AsValue(given)...},
                      [&](Interface& inner) { return (inner.*member)(std::forward<Given>(given)...); });
    }

    /// Runs `work(inner)` with the arguments shown as listed.
    template <typename Work, typename Show = AsItIs>
    auto Record(std::string object, std::string operation, std::vector<Value> arguments, Work&& work,
                Show&& show = {}) {
        return recorder_->Call(
            std::move(object), std::move(operation), std::move(arguments), [&] { return work(*inner_); },
            std::forward<Show>(show));
    }

    const std::shared_ptr<Recorder>& SharedRecorder() const { return recorder_; }
    Interface& Inner() { return *inner_; }

private:
    std::shared_ptr<Recorder> recorder_;
    std::shared_ptr<Interface> inner_;
};

}  // namespace kxjob
