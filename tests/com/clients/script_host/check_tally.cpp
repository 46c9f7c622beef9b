#include "check_tally.h"

#include <iostream>

namespace kxjob::script_host {

void CheckTally::Check(const std::string& what, const std::string& expected, const std::string& actual) {
    if (expected != actual) {
        Fail(what + "\n    expected " + expected + "\n    but got  " + actual);
    } else {
        ++run_;
    }
}

void CheckTally::Fail(const std::string& what) {
    ++run_;
    ++failed_;
    std::cerr << "failed: " << what << "\n";
}

bool CheckTally::Passed() const {
    if (!expected_) {
        std::cerr << "the script did not say how many checks it has (host.Expect)\n";
        return false;
    }
    if (run_ != *expected_) std::cerr << run_ << " checks ran, " << *expected_ << " were announced\n";
    if (failed_ != 0) std::cerr << failed_ << " of " << run_ << " checks failed\n";
    return run_ == *expected_ && failed_ == 0;
}

}  // namespace kxjob::script_host
