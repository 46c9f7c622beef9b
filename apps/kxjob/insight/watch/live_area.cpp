#include "insight/watch/live_area.h"

namespace kxjob::command {
namespace {

constexpr const char* kHideCursor = "\033[?25l";
constexpr const char* kShowCursor = "\033[?25h";
constexpr const char* kClearLine = "\033[K";
constexpr const char* kClearBelow = "\033[J";

}  // namespace

LiveArea::LiveArea(std::ostream& out) : out_(out) {
    out_ << kHideCursor << std::flush;
}

LiveArea::~LiveArea() {
    out_ << kShowCursor << std::flush;
}

void LiveArea::Draw(const std::vector<std::string>& lines) {
    PrintOver(lines);
    drawn_ = lines.size();
}

void LiveArea::Keep(const std::vector<std::string>& lines) {
    if (lines.empty()) return;
    PrintOver(lines);
    drawn_ = 0;
}

void LiveArea::PrintOver(const std::vector<std::string>& lines) {
    if (drawn_ > 0) out_ << "\033[" << drawn_ << 'A';
    for (const std::string& line : lines) out_ << line << kClearLine << '\n';
    out_ << kClearBelow << std::flush;
}

}  // namespace kxjob::command
