#include "insight/doctor/clock_check.h"

#include <fmt/format.h>

#include <chrono>
#include <cmath>
#include <optional>

#include "kxjob/caller_texts.h"
#include "records/iso_time.h"

namespace kxjob::command {
namespace {

constexpr double kMostSeconds = 5;

}  // namespace

Finding ClockFinding(double difference) {
    if (std::abs(difference) <= kMostSeconds) {
        return {finding::kClockAgrees,
                fmt::format("The clocks of the store and of this machine are {:.1f} s apart.",
                            std::abs(difference))};
    }
    return {finding::kClockDiffers,
            fmt::format("The store's clock is {:.1f} s {} this machine's: times that they have written "
                        "cannot be compared.",
                        std::abs(difference), difference > 0 ? "ahead of" : "behind")};
}

void CheckClock(Store& store, Findings& findings) {
    const std::optional<Moment> before = ParseIsoTime(NowISODateTime());
    const std::optional<Moment> storeTime = ParseIsoTime(store.NowISODateTime());
    const std::optional<Moment> after = ParseIsoTime(NowISODateTime());
    if (!before || !storeTime || !after) {
        findings.push_back({finding::kClockUnknown,
                            "How to ask this store for its time is not known, so its clock cannot be "
                            "compared with this machine's."});
        return;
    }
    const Moment machineTime = *before + (*after - *before) / 2;
    findings.push_back(ClockFinding(std::chrono::duration<double>(*storeTime - machineTime).count()));
}

}  // namespace kxjob::command
