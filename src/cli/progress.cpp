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
constexpr double kFirstSeconds = 0.2;
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

std::string ProgressLine(const SolveProgress& progress) {
    const std::int64_t filled = std::clamp<std::int64_t>(
        kBarWidth * progress.Positions / std::max<std::int64_t>(progress.NumPos, 1), 0, kBarWidth);
    std::string line = "[" + std::string(static_cast<std::size_t>(filled), '#') +
                       std::string(static_cast<std::size_t>(kBarWidth - filled), '.') + "] ";
    return line + B(progress.Positions) + " positions, layer " + B(progress.ForwLayers) + "+" +
           B(progress.BackLayers) + ", " + B(static_cast<std::int64_t>(progress.Seconds)) + " s";
}

ProgressBar::ProgressBar() : wanted_(isatty(STDERR_FILENO) == 1) {}

void ProgressBar::ShowProgress(const SolveProgress& progress) {
    if (!wanted_ || progress.Seconds < kFirstSeconds) return;
    shown_ = true;
    WriteError(std::string(kEraseLine) + ProgressLine(progress).substr(0, RoomInLine()));
}

void ProgressBar::Clear() {
    if (shown_) WriteError(kEraseLine);
    shown_ = false;
}

}  // namespace kavit
