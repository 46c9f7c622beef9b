#include "terminal/colour.h"

#include <unistd.h>

#include <cstdlib>

namespace kxjob::command {
namespace {

bool IsSet(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

const char* CodeOf(Tone tone) {
    switch (tone) {
        case Tone::kGood: return "\033[32m";
        case Tone::kBad: return "\033[31m";
        case Tone::kBusy: return "\033[36m";
        case Tone::kWaiting: return "\033[33m";
        case Tone::kPlain: break;
    }
    return "";
}

}  // namespace

Tone ToneOf(std::string_view state) {
    if (state == "COMPLETE") return Tone::kGood;
    if (state == "FAILED" || state == "CANCELLED") return Tone::kBad;
    if (state == "RUNNING") return Tone::kBusy;
    if (state == "CREATING" || state == "READY" || state == "QUEUED") return Tone::kWaiting;
    return Tone::kPlain;
}

Palette Palette::OfStandardOutput() {
    const char* const terminal = std::getenv("TERM");
    const bool knowsColours = terminal != nullptr && std::string_view(terminal) != "dumb";
    return Palette(isatty(STDOUT_FILENO) != 0 && knowsColours && !IsSet("NO_COLOR"));
}

std::string Palette::Paint(std::string text, Tone tone) const {
    if (!paints_ || tone == Tone::kPlain) return text;
    return CodeOf(tone) + std::move(text) + "\033[0m";
}

}  // namespace kxjob::command
