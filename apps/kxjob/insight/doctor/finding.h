#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "value_json.h"

namespace kxjob::command {

enum class Severity { Ok, Warning, Problem };

/// "ok", "warning" or "problem".
std::string_view NameOf(Severity severity);

/// One thing that a look at a store can find. Numbers and names are for programs to rely on.
struct FindingKind {
    int number;
    std::string_view name;
    Severity severity;
};

namespace finding {
inline constexpr FindingKind kConfigurationRead{10, "configuration-read", Severity::Ok};
inline constexpr FindingKind kNoConfiguration{11, "no-configuration", Severity::Ok};
inline constexpr FindingKind kUnknownKey{12, "unknown-key", Severity::Warning};
inline constexpr FindingKind kConfigurationUnreadable{13, "configuration-unreadable", Severity::Problem};
inline constexpr FindingKind kDriverSerialised{20, "driver-serialised", Severity::Warning};
inline constexpr FindingKind kNoStoreNamed{30, "no-store-named", Severity::Problem};
inline constexpr FindingKind kConnected{31, "connected", Severity::Ok};
inline constexpr FindingKind kNotConnected{32, "not-connected", Severity::Problem};
inline constexpr FindingKind kExaminationFailed{33, "examination-failed", Severity::Problem};
inline constexpr FindingKind kEngine{40, "engine", Severity::Ok};
inline constexpr FindingKind kTableThere{50, "table-there", Severity::Ok};
inline constexpr FindingKind kTableUnreadable{51, "table-unreadable", Severity::Problem};
inline constexpr FindingKind kColumnUnreadable{52, "column-unreadable", Severity::Problem};
inline constexpr FindingKind kSmallTableUnreadable{53, "small-table-unreadable", Severity::Warning};
inline constexpr FindingKind kIndexThere{60, "index-there", Severity::Ok};
inline constexpr FindingKind kIndexMissing{61, "index-missing", Severity::Warning};
inline constexpr FindingKind kIndexesUnknown{62, "indexes-unknown", Severity::Warning};
inline constexpr FindingKind kClockAgrees{70, "clock-agrees", Severity::Ok};
inline constexpr FindingKind kClockDiffers{71, "clock-differs", Severity::Warning};
inline constexpr FindingKind kClockUnknown{72, "clock-unknown", Severity::Warning};
inline constexpr FindingKind kComponentThere{80, "component-there", Severity::Ok};
inline constexpr FindingKind kComponentMissing{81, "component-missing", Severity::Warning};
inline constexpr FindingKind kNoJobType{82, "no-job-type", Severity::Warning};
inline constexpr FindingKind kTypeMissing{83, "type-missing", Severity::Problem};
}  // namespace finding

/// In the order of their numbers.
std::span<const FindingKind> AllFindingKinds();

struct Finding {
    FindingKind kind;
    std::string sentence;
};

/// What an error says, as one line that ends like a sentence.
std::string SentenceOf(std::string description);

using Findings = std::vector<Finding>;

/// {"number","finding","severity","sentence"}
Json ToJson(const Finding& finding);

}  // namespace kxjob::command
