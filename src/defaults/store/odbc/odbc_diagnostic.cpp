#include "defaults/store/odbc/odbc_diagnostic.h"

#include <algorithm>

#include "defaults/text/trimmed.h"

namespace kxjob {

Diagnostic Decisive(std::span<const Diagnostic> records) {
    if (records.empty()) return {"HY000", 0, "The driver gives no reason"};
    const auto error = std::find_if(records.begin(), records.end(),
                                    [](const Diagnostic& record) { return !record.state.starts_with("01"); });
    Diagnostic decisive = error == records.end() ? records.front() : *error;
    decisive.message = std::string(Trimmed(decisive.message));
    return decisive;
}

}  // namespace kxjob
