#pragma once

namespace kxjob::testing_support {

/// Between Begin and End there is room for so many writes of SQLite to its files, and then the system tells
/// it that none is left on the device. What SQLite does about it is its own code.
class FullDisk {
public:
    static void Begin(int writesBefore);
    static void End();
};

}  // namespace kxjob::testing_support
