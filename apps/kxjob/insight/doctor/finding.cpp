#include "insight/doctor/finding.h"

#include <array>
#include <regex>

namespace kxjob::command {
namespace {

constexpr std::array kAll{finding::kConfigurationRead, finding::kNoConfiguration,
                          finding::kUnknownKey,        finding::kConfigurationUnreadable,
                          finding::kDriverSerialised,  finding::kNoStoreNamed,
                          finding::kConnected,         finding::kNotConnected,
                          finding::kExaminationFailed, finding::kEngine,
                          finding::kTableThere,        finding::kTableUnreadable,
                          finding::kColumnUnreadable,  finding::kSmallTableUnreadable,
                          finding::kIndexThere,        finding::kIndexMissing,
                          finding::kIndexesUnknown,    finding::kClockAgrees,
                          finding::kClockDiffers,      finding::kClockUnknown,
                          finding::kComponentThere,    finding::kComponentMissing,
                          finding::kNoJobType,         finding::kTypeMissing};

}  // namespace

std::string_view NameOf(Severity severity) {
    switch (severity) {
        case Severity::Ok: return "ok";
        case Severity::Warning: return "warning";
        case Severity::Problem: return "problem";
    }
    return "";
}

std::span<const FindingKind> AllFindingKinds() {
    return kAll;
}

std::string SentenceOf(std::string description) {
    static const std::regex kBreak(R"(\s*[\r\n]\s*)");
    description = std::regex_replace(description, kBreak, " ");
    const bool hasEnd =
        !description.empty() && std::string_view(".?!").find(description.back()) != std::string_view::npos;
    return hasEnd ? description : description + ".";
}

Json ToJson(const Finding& finding) {
    return {{"number", finding.kind.number},
            {"finding", finding.kind.name},
            {"severity", NameOf(finding.kind.severity)},
            {"sentence", finding.sentence}};
}

}  // namespace kxjob::command
