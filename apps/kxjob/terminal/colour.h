#pragma once

#include <string>
#include <string_view>

namespace kxjob::command {

/// What a text is about, for those who see colours.
enum class Tone { kPlain, kGood, kBad, kBusy, kWaiting };

/// The tone of the state of a job, an item or a task.
Tone ToneOf(std::string_view state);

/// Paints texts, or leaves them as they are.
class Palette {
public:
    /// Leaves every text as it is.
    Palette() = default;
    /// Paints when standard output is a terminal that knows colours, unless NO_COLOR is set to anything.
    static Palette OfStandardOutput();

    std::string Paint(std::string text, Tone tone) const;

private:
    explicit Palette(bool paints) : paints_(paints) {}

    bool paints_ = false;
};

}  // namespace kxjob::command
