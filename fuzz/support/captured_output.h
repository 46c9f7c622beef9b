#pragma once

#include <iostream>
#include <sstream>
#include <string>

namespace kxjob::fuzz {

/// Takes what goes to standard output and standard error for as long as it lives.
class CapturedOutput {
public:
    CapturedOutput() : out_(std::cout.rdbuf(shown_.rdbuf())), error_(std::cerr.rdbuf(said_.rdbuf())) {}
    CapturedOutput(const CapturedOutput&) = delete;
    CapturedOutput& operator=(const CapturedOutput&) = delete;
    ~CapturedOutput() {
        std::cout.rdbuf(out_);
        std::cerr.rdbuf(error_);
    }

    std::string Shown() const { return shown_.str(); }

private:
    std::ostringstream shown_;
    std::ostringstream said_;
    std::streambuf* out_;
    std::streambuf* error_;
};

}  // namespace kxjob::fuzz
