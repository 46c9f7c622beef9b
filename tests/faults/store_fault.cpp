#include "faults/store_fault.h"

#include <filesystem>
#include <memory>

#include "defaults/store/connection_string.h"
#include "faults/full_disk.h"

namespace kxjob::testing_support {
namespace {

bool FailsWritesOnly(StoreUse use) {
    return use == StoreUse::Writes;
}

bool FailsAnyUse(StoreUse use) {
    return use != StoreUse::None;
}

StoreFault FileTakenAway(const std::string& file) {
    return {.name = "connection cut",
            .fails = FailsAnyUse,
            .states = {"[08S01]"},
            .prepare = [] {},
            .strike = [file](int) { std::filesystem::rename(file, file + ".away"); },
            .mend = [file] { std::filesystem::rename(file + ".away", file); }};
}

StoreFault SessionEnded(FaultWorld& world) {
    const auto session = std::make_shared<std::string>();
    return {.name = "connection cut",
            .fails = FailsAnyUse,
            .states = {"[57P01]", "[08S01]"},
            .prepare = [&world, session] { *session = world.LibrarySession(); },
            .strike = [&world, session](int) { world.Own().Query(world.Engine().endSession(*session)); },
            .mend = [] {},
            .isOverWhenMended = false};
}

}  // namespace

StoreFault ConnectionCut(FaultWorld& world) {
    if (world.Engine().endSession) return SessionEnded(world);
    return FileTakenAway(std::string(kxjob::ConnectionString(world.ConnectionString()).Value("Database")));
}

StoreFault DiskFull() {
    return {.name = "disk full",
            .fails = FailsWritesOnly,
            .states = {"[53100]"},
            .prepare = [] {},
            .strike = FullDisk::Begin,
            .mend = FullDisk::End,
            .isGradual = true};
}

}  // namespace kxjob::testing_support
