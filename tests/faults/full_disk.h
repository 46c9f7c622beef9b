#pragma once

namespace kxjob::testing_support {

/// Between Begin and End the system tells SQLite, whenever it writes to a file, that there is no room left on
/// the device. What SQLite does about it is its own code.
class FullDisk {
public:
    static void Begin();
    static void End();
};

}  // namespace kxjob::testing_support
