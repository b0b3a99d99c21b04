#include "cli/progress.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "output/number_text.h"

namespace kavit {

namespace {

constexpr std::int64_t kBarWidth = 24;
constexpr std::string_view kEraseLine = "\r\x1b[K";

void WriteError(std::string_view text) {
    // A line of a progress bar that gets lost is drawn again.
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
}

// A line that wraps could not be erased any more. A terminal that keeps its width to itself is
// taken for an ordinary one.
std::size_t RoomInLine() {
    winsize size = {};
    if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return 79;
    return size.ws_col - 1U;
}

}  // namespace

std::string ProgressLine(const SearchCounters& counters, std::int64_t numPos, double seconds) {
    const std::int64_t filled =
        std::clamp<std::int64_t>(kBarWidth * counters.BucketCnt / numPos, 0, kBarWidth);
    std::string line = "[" + std::string(static_cast<std::size_t>(filled), '#') +
                       std::string(static_cast<std::size_t>(kBarWidth - filled), '.') + "] ";
    line += B(counters.BucketCnt) + " positions, level ";
    // The optimizer works on a level of either side at a time.
    line += counters.SeaPhase > 1 ? B(counters.ForwLevel) + "+" + B(counters.BackLevel)
                                  : B(counters.SeaSteps);
    return line + ", " + B(static_cast<std::int64_t>(seconds)) + " s";
}

Progress::Progress() : wanted_(isatty(STDERR_FILENO) == 1) {}

void Progress::Show(const SearchCounters& counters, std::int64_t numPos, double now) {
    if (!wanted_ || now < next_) return;
    next_ = now + kEverySeconds;
    shown_ = true;
    const std::string line = ProgressLine(counters, numPos, now);
    WriteError(std::string(kEraseLine) + line.substr(0, RoomInLine()));
}

void Progress::Clear() {
    if (shown_) WriteError(kEraseLine);
    shown_ = false;
    next_ = kFirstSeconds;
}

}  // namespace kavit
