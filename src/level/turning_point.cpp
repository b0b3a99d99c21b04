#include "level/turning_point.h"

#include <algorithm>

namespace kavit {

TurningPoint::TurningPoint(std::int64_t last, int patience) : firstNo_(last), patience_(patience) {}

// The middle of the widest run of positions without an answer; of several the last, whose positions
// are nearest to the end and so the cheapest to ask for.
std::optional<std::int64_t> TurningPoint::Next() const {
    if (static_cast<int>(unknown_.size()) >= patience_) return std::nullopt;
    std::int64_t before = lastYes_;
    std::int64_t widest = 0;
    std::int64_t middle = 0;
    const auto gap = [&](std::int64_t behind) {
        if (behind - before > 1 && behind - before >= widest) {
            widest = behind - before;
            middle = before + widest / 2;
        }
        before = behind;
    };
    for (const std::int64_t position : unknown_)
        if (position > lastYes_ && position < firstNo_) gap(position);
    gap(firstNo_);
    if (widest == 0) return std::nullopt;
    return middle;
}

void TurningPoint::Answer(std::int64_t position, Solvable solvable) {
    if (position <= lastYes_ || position >= firstNo_) return;
    if (solvable == Solvable::Yes) lastYes_ = position;
    if (solvable == Solvable::No) firstNo_ = position;
    if (solvable == Solvable::Unknown)
        unknown_.insert(std::upper_bound(unknown_.begin(), unknown_.end(), position), position);
}

}  // namespace kavit
