#include "defaults/system/clock_random_source.h"

#include <chrono>
#include <cstdint>

#include "defaults/system/own_ids.h"

namespace kxjob {
namespace {

template <typename Clock>
std::uint64_t Nanoseconds() {
    const auto sinceStart = Clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::nanoseconds>(sinceStart).count());
}

std::uint32_t Low(std::uint64_t number) {
    return static_cast<std::uint32_t>(number & 0xFFFFFFFFU);
}
std::uint32_t High(std::uint64_t number) {
    return static_cast<std::uint32_t>(number >> 32U);
}

}  // namespace

void ClockRandomSource::SeedFromTimer() {
    const std::uint64_t steady = Nanoseconds<std::chrono::steady_clock>();
    const std::uint64_t system = Nanoseconds<std::chrono::system_clock>();
    std::seed_seq seeds{Low(steady),
                        High(steady),
                        Low(system),
                        High(system),
                        static_cast<std::uint32_t>(OwnProcessId()),
                        static_cast<std::uint32_t>(OwnThreadId())};
    engine_.seed(seeds);
}

float ClockRandomSource::Next() {
    // As many bits as a float holds exactly: more would round the largest numbers up to 1.
    constexpr unsigned kSurplusBits = 8;
    constexpr float kOneStep = 0x1p-24F;
    return static_cast<float>(static_cast<std::uint32_t>(engine_()) >> kSurplusBits) * kOneStep;
}

}  // namespace kxjob
