#include "insight/watch/watch_view.h"

#include <fmt/format.h>

#include "insight/watch/job_line.h"
#include "insight/watch/live_area.h"
#include "kxjob/caller_texts.h"
#include "terminal/colour.h"
#include "terminal/window_size.h"

namespace kxjob::command {
namespace {

std::string RemovedLine(const WatchedJob& job) {
    return fmt::format("The job {} has been removed.", job.look.guid);
}

class BarView : public WatchView {
public:
    explicit BarView(std::ostream& out) : area_(out) {}

    void Show(const std::vector<WatchedJob>& jobs) override {
        const WindowSize window = SizeOfWindow();
        std::vector<std::string> last;
        std::vector<std::string> live;
        for (const WatchedJob& job : jobs) {
            (job.isLast ? last : live)
                .push_back(job.isRemoved ? RemovedLine(job)
                                         : BarLine(job.look, job.pace, window.columns, palette_));
        }
        // What has scrolled out of the window cannot be drawn over.
        const std::size_t most = window.rows > 2 ? window.rows - 2 : 1;
        if (live.size() > most) {
            const std::string more = fmt::format("and {} more jobs", live.size() - most);
            live.resize(most);
            live.push_back(more);
        }
        area_.Keep(last);
        area_.Draw(live);
    }

private:
    LiveArea area_;
    Palette palette_ = Palette::OfStandardOutput();
};

class PlainView : public WatchView {
public:
    PlainView(std::ostream& out, int rounds) : out_(out), rounds_(rounds) {}

    void Show(const std::vector<WatchedJob>& jobs) override {
        const bool isForAll = round_++ % rounds_ == 0;
        for (const WatchedJob& job : jobs) {
            if (job.isRemoved) {
                out_ << RemovedLine(job) << '\n';
            } else if (isForAll || job.isLast) {
                out_ << PlainLine(job.look, job.pace) << '\n';
            }
        }
        out_.flush();
    }

private:
    std::ostream& out_;
    int rounds_;
    int round_ = 0;
};

class JsonView : public WatchView {
public:
    explicit JsonView(std::ostream& out) : out_(out) {}

    void Show(const std::vector<WatchedJob>& jobs) override {
        const std::string time = NowISODateTime();
        for (const WatchedJob& job : jobs) {
            Json json = LookJson(time, job.look, job.pace);
            json["removed"] = job.isRemoved;
            out_ << OneLine(json) << '\n';
        }
        out_.flush();
    }

private:
    std::ostream& out_;
};

}  // namespace

std::unique_ptr<WatchView> MakeBarView(std::ostream& out) {
    return std::make_unique<BarView>(out);
}

std::unique_ptr<WatchView> MakePlainView(std::ostream& out, int rounds) {
    return std::make_unique<PlainView>(out, rounds);
}

std::unique_ptr<WatchView> MakeJsonView(std::ostream& out) {
    return std::make_unique<JsonView>(out);
}

}  // namespace kxjob::command
