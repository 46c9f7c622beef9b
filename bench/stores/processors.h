#pragma once

namespace kxjob::bench {

/// While it lives, this program keeps to one processor and servers that script/stores has started to another:
/// where the system puts them decides more about a short exchange than all that is measured. Does nothing on
/// a single processor.
class ProcessorsApart {
public:
    ProcessorsApart();
    ProcessorsApart(const ProcessorsApart&) = delete;
    ProcessorsApart& operator=(const ProcessorsApart&) = delete;
    ~ProcessorsApart();

private:
    const unsigned processors_;  // asked for before: later there seems to be one only
};

}  // namespace kxjob::bench
