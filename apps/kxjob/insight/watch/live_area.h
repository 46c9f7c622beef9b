#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace kxjob::command {

/// Lines at the end of a terminal that are drawn over again and again. The cursor is hidden while it lives.
class LiveArea {
public:
    explicit LiveArea(std::ostream& out);
    LiveArea(const LiveArea&) = delete;
    LiveArea& operator=(const LiveArea&) = delete;
    ~LiveArea();

    /// Draws these lines in place of the former ones; none may be wider than the window.
    void Draw(const std::vector<std::string>& lines);
    /// Prints lines that stay, above what is drawn next.
    void Keep(const std::vector<std::string>& lines);

private:
    void PrintOver(const std::vector<std::string>& lines);

    std::ostream& out_;
    std::size_t drawn_ = 0;
};

}  // namespace kxjob::command
