#include "insight/stats/plot.h"

#include <fmt/format.h>

#include <algorithm>
#include <sstream>

#include "insight/stats/gnuplot.h"

namespace kxjob::command {
namespace {

constexpr std::size_t kMostLines = 6;     // more cannot be told apart
constexpr std::size_t kMostPoints = 500;  // more than a picture has columns

/// What the plot's key calls a job; nothing in it means anything to the program that draws.
std::string TitleOf(const JobRecord& job) {
    std::string title = job.description.empty() ? job.guid : job.description;
    std::ranges::replace_if(
        title, [](unsigned char c) { return c < ' ' || c == 127 || c == '\'' || c == '"' || c == '\\'; },
        ' ');
    return title;
}

/// Neither blanks at the ends of lines nor empty lines around them.
std::string WithoutMargins(const std::string& text) {
    std::string kept;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        line.erase(line.find_last_not_of(' ') + 1);
        if (!line.empty() || !kept.empty()) kept += line + '\n';
    }
    kept.erase(kept.find_last_not_of('\n') + 1);
    return kept + '\n';
}

std::string PointsOf(const std::vector<double>& ends) {
    std::string points = "0 0\n";
    const std::size_t step = std::max<std::size_t>(1, ends.size() / kMostPoints);
    for (std::size_t i = step - 1; i < ends.size(); i += step)
        points += fmt::format("{} {}\n", ends[i], i + 1);
    return points + fmt::format("{} {}\n", ends.back(), ends.size());
}

}  // namespace

Plot::Plot(const std::vector<JobStatistics>& jobs) {
    for (const JobStatistics& statistics : jobs) {
        if (statistics.ends.empty()) continue;
        if (lines_.size() == kMostLines) break;
        lines_.push_back({TitleOf(statistics.job), PointsOf(statistics.ends)});
    }
}

std::string Plot::Script(const std::string& terminal) const {
    std::string script = "set terminal " + terminal +
                         "\nset key noenhanced top left\nset title 'items finished'\n"
                         "set xlabel 'seconds since the start'\nset yrange [0:*]\n";
    std::string plots;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        script += fmt::format("$line{} << END_OF_POINTS\n{}END_OF_POINTS\n", i, lines_[i].points);
        plots += fmt::format("{}$line{} with steps title '{}'", i == 0 ? "plot " : ", ", i, lines_[i].title);
    }
    return script + plots + '\n';
}

std::optional<std::string> Plot::AsText(std::size_t columns, std::size_t rows) const {
    // The program prints one column more than it is told.
    const std::optional<std::string> text =
        RunGnuplot(Script(fmt::format("dumb nofeed size {}, {}", columns - 1, rows)));
    return text ? std::optional(WithoutMargins(*text)) : std::nullopt;
}

std::optional<std::string> Plot::AsSvg() const {
    return RunGnuplot(Script("svg size 800, 500 noenhanced background rgb 'white'"));
}

}  // namespace kxjob::command
