#include "terminal/window_size.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace kxjob::command {

WindowSize SizeOfWindow() {
    winsize size{};
    const bool isKnown = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 && size.ws_row > 0;
    if (!isKnown) return {80, 24};
    return {size.ws_col, size.ws_row};
}

}  // namespace kxjob::command
