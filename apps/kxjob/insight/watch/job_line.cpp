#include "insight/watch/job_line.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "terminal/printable.h"

namespace kxjob::command {
namespace {

constexpr std::size_t kNameWidth = 20;
constexpr std::size_t kBarWidth = 20;
constexpr std::size_t kLeastText = 20;  // beside a bar

/// The first `most` characters of a text in UTF-8.
std::string FirstOf(const std::string& text, std::size_t most) {
    std::size_t end = 0;
    for (std::size_t characters = 0; end < text.size(); ++end) {
        const bool isContinued = (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U;
        if (!isContinued && characters++ == most) break;
    }
    return text.substr(0, end);
}

std::string NameOfJob(const JobLook& look) {
    return OnOneLine(look.description.empty() ? look.guid : look.description);
}

double ShareOf(const JobLook& look) {
    if (look.totalItems <= 0) return HasEnded(look) ? 1 : 0;
    return std::clamp(static_cast<double>(EndedItems(look)) / static_cast<double>(look.totalItems), 0.0, 1.0);
}

std::string TimeText(double seconds) {
    const auto whole = std::llround(seconds);
    if (whole < 120) return fmt::format("{} s", whole);
    if (whole < 7200) return fmt::format("{} min", (whole + 30) / 60);
    return fmt::format("{} h {} min", whole / 3600, whole % 3600 / 60);
}

std::string CountsText(const JobLook& look, const ItemPace& pace) {
    std::string text = fmt::format("{:.0f} %, {} of {} items, {} failed", std::floor(ShareOf(look) * 100),
                                   EndedItems(look), look.totalItems, look.failedItems);
    if (HasEnded(look)) return text;
    if (pace.ItemsPerSecond() > 0) text += fmt::format(", {:.1f} items/s", pace.ItemsPerSecond());
    if (const std::optional<double> left = pace.SecondsFor(look.totalItems - EndedItems(look)))
        text += fmt::format(", {} left", TimeText(*left));
    return text;
}

}  // namespace

std::string PlainLine(const JobLook& look, const ItemPace& pace) {
    return fmt::format("{}: {}, {}", NameOfJob(look), look.state, CountsText(look, pace));
}

std::string BarLine(const JobLook& look, const ItemPace& pace, std::size_t width, const Palette& palette) {
    std::string name = FirstOf(NameOfJob(look), kNameWidth);
    name.append(kNameWidth - WidthOf(name), ' ');
    const std::string text = look.state + ", " + CountsText(look, pace);
    constexpr std::size_t kBeforeText = kNameWidth + kBarWidth + 4;
    if (width < kBeforeText + kLeastText) return FirstOf(fmt::format("{} {}", name, text), width);

    const auto filled = static_cast<std::size_t>(ShareOf(look) * kBarWidth);
    const Tone tone = filled == 0 ? Tone::kPlain : look.failedItems > 0 ? Tone::kBad : Tone::kGood;
    return fmt::format("{} [{}{}] {}", name, palette.Paint(std::string(filled, '#'), tone),
                       std::string(kBarWidth - filled, '.'), FirstOf(text, width - kBeforeText));
}

Json LookJson(const std::string& time, const JobLook& look, const ItemPace& pace) {
    const std::optional<double> left =
        HasEnded(look) ? std::nullopt : pace.SecondsFor(look.totalItems - EndedItems(look));
    return {{"time", time},
            {"job", look.guid},
            {"description", look.description},
            {"state", look.state},
            {"totalItems", look.totalItems},
            {"succeededItems", look.succeededItems},
            {"failedItems", look.failedItems},
            {"itemsPerSecond", pace.ItemsPerSecond()},
            {"secondsLeft", left ? Json(*left) : Json()}};
}

}  // namespace kxjob::command
