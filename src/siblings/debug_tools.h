#pragma once

#include <memory>

#include "collaborators/trace_log.h"
#include "kxjob/component.h"

namespace kxjob {

/// `LogAndReRaiseVBError` (error object, application object, line, project, class, method): writes one line
/// about the error to the trace log, at level 1, and raises the same error again. The error object has the
/// properties `Number`, `Source` and `Description`.
class DebugTools : public Component {
public:
    explicit DebugTools(std::shared_ptr<TraceLog> log);

    std::string Name() const override;
    std::span<const std::string_view> MemberNames() const override;
    Value Call(std::string_view method, std::span<const Value> arguments) override;

private:
    std::shared_ptr<TraceLog> log_;
};

}  // namespace kxjob
