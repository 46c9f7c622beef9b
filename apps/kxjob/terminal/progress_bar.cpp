#include "terminal/progress_bar.h"

#include <fmt/format.h>

#include <string>

namespace kxjob::command {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kRedraw{100};
constexpr milliseconds kPlainLine{2000};
constexpr std::size_t kWidth = 30;

}  // namespace

ProgressBar::ProgressBar(std::ostream& out, bool isTerminal, std::size_t total)
    : out_(out), isTerminal_(isTerminal), total_(total), start_(Clock::now()), nextShow_(start_) {}

void ProgressBar::UpdateAt(Clock::time_point now, std::size_t done, std::size_t failed) {
    if (now < nextShow_) return;
    nextShow_ = now + (isTerminal_ ? kRedraw : kPlainLine);
    Show(now, done, failed);
}

void ProgressBar::Finish(std::size_t done, std::size_t failed) {
    Show(Clock::now(), done, failed);
    if (isTerminal_) out_ << '\n';
    out_.flush();
}

void ProgressBar::Show(Clock::time_point now, std::size_t done, std::size_t failed) {
    const double seconds = std::chrono::duration<double>(now - start_).count();
    const double rate = seconds > 0 ? static_cast<double>(done) / seconds : 0;
    const double share = total_ == 0 ? 1 : static_cast<double>(done) / static_cast<double>(total_);
    std::string text = fmt::format("{:3.0f} %  {} of {} items, {} failed, {:.0f} items/s", share * 100, done,
                                   total_, failed, rate);
    if (rate > 0 && done < total_)
        text += fmt::format(", {:.0f} s left", static_cast<double>(total_ - done) / rate);
    if (isTerminal_) {
        const auto filled = static_cast<std::size_t>(share * kWidth);
        out_ << "\r\033[K[" << std::string(filled, '#') << std::string(kWidth - filled, '.') << "] " << text;
    } else {
        out_ << text << '\n';
    }
    out_.flush();
}

}  // namespace kxjob::command
