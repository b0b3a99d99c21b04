#include "cli/progress.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>

#include "output/number_text.h"

namespace kavit {

namespace {

constexpr std::int64_t kBarWidth = 10;
constexpr double kFirstSeconds = 0.2;
constexpr std::string_view kEraseLine = "\r\x1b[K";

void WriteError(std::string_view text) {
    // A line of a progress bar that gets lost is drawn again.
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
}

// "850", "339k", "12.3M": a line must not be longer than it has to be.
std::string Short(std::int64_t number) {
    if (number < 10000) return B(number);
    if (number < 10000000) return B(number / 1000) + "k";
    return B(number / 1000000) + "." + B(number / 100000 % 10) + "M";
}

// A line that wraps could not be erased any more. A terminal that keeps its width to itself is
// taken for an ordinary one.
std::size_t RoomInLine() {
    winsize size = {};
    if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return 79;
    return size.ws_col - 1U;
}

// Without control characters.
std::string ProgressLine(const SolveProgress& p) {
    const std::int64_t filled = std::clamp<std::int64_t>(
        kBarWidth * p.Positions / std::max<std::int64_t>(p.NumPos, 1), 0, kBarWidth);
    std::string line = "[" + std::string(static_cast<std::size_t>(filled), '#') +
                       std::string(static_cast<std::size_t>(kBarWidth - filled), '.') + "] ";
    line += Short(p.Positions) + " positions, " + B(std::llround(p.Seconds)) + " s, ";
    const std::string layers = B(p.ForwLayers) + "+" + B(p.BackLayers);
    if (p.SeaPhase == 3) {
        line += "at least " + B(p.MovesLower) + " moves";
    } else if (p.SeaPhase == 2) {
        line += "improving moves, layers " + layers;
    } else {
        line += "at least " + B(p.PushesLower) + " pushes";
        if (p.PushesReach) line += " (room for " + B(*p.PushesReach) + ")";
        line += ", layers " + layers + ", now " + Short(p.LayerSize);
    }
    const double memory = static_cast<double>(p.Positions) * p.BytesPerPosition;
    return line + ", " + Short(std::llround(p.OffersPerSecond)) + " offers/s, " +
           BytesText(static_cast<std::uint64_t>(memory));
}

}  // namespace

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
