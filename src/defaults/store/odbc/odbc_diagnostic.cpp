#include "defaults/store/odbc/odbc_diagnostic.h"

#include <algorithm>

namespace kxjob {

Diagnostic Decisive(std::span<const Diagnostic> records) {
    if (records.empty()) return {"HY000", 0, "The driver gives no reason"};
    const auto error = std::find_if(records.begin(), records.end(),
                                    [](const Diagnostic& record) { return !record.state.starts_with("01"); });
    return error == records.end() ? records.front() : *error;
}

}  // namespace kxjob
