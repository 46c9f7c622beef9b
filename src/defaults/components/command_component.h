#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "kxjob/automation_error.h"
#include "kxjob/component.h"

namespace kxjob {

namespace error_number {
/// The automation runtime's "unspecified error": a command that fails has only words for it.
inline constexpr std::int32_t kCommandFailed = static_cast<std::int32_t>(0x80004005U);
}  // namespace error_number

/// A component whose work is done by a program, which is run once for each job item. Its one member is
/// `RunJobItem` (connection string, provider, qualifier, job GUID, job item GUID, identifier, data): the data
/// is the program's standard input, the other arguments are its environment variables
/// KXJOB_CONNECTION_STRING, KXJOB_PROVIDER, KXJOB_QUALIFIER, KXJOB_JOB, KXJOB_JOB_ITEM and KXJOB_IDENTIFIER.
/// Gives the program's standard output without the line breaks at its end. An exit status other than 0 raises
/// 0x80004005 with its standard error as the description.
class CommandComponent : public Component {
public:
    /// `words` are the program's path and its arguments.
    CommandComponent(std::string progId, std::vector<std::string> words);

    std::string Name() const override { return progId_; }
    Value Call(std::string_view method, std::span<const Value> arguments) override;

private:
    std::string progId_;
    std::vector<std::string> words_;
};

/// A new component that runs this command line. Raises "class not registered" when its program is not there
/// or not executable.
ComponentRef CreateCommandComponent(const std::string& progId, const std::string& commandLine);

}  // namespace kxjob
