#pragma once

#include <optional>
#include <string>

namespace kxjob::script_host {

/// Counts a script's checks. A script says first how many there are: one that stops early, or whose failing
/// lines are passed over in silence, has run fewer.
class CheckTally {
public:
    void Expect(int count) { expected_ = count; }
    /// One check; a failed one is reported on standard error at once.
    void Check(const std::string& what, const std::string& expected, const std::string& actual);
    /// One check that has failed.
    void Fail(const std::string& what);

    /// Whether every check that was announced ran and none failed; says on standard error what is wrong.
    bool Passed() const;

private:
    std::optional<int> expected_;
    int run_ = 0;
    int failed_ = 0;
};

}  // namespace kxjob::script_host
