#include "level/play.h"

#include <algorithm>

#include "level/paths.h"
#include "level/replay.h"
#include "level/steps.h"

namespace kavit {

std::string HandPlay::Played() const {
    return cursor_.Line().substr(0, static_cast<std::size_t>(cursor_.At()));
}

bool HandPlay::Solved() const {
    return IsSolved(Position());
}

bool HandPlay::Step(int direction) {
    const std::int64_t begin = cursor_.At();
    if (!cursor_.Step(direction)) return false;
    EndGesture(begin);
    return true;
}

bool HandPlay::Walk(int to) {
    const auto path = WalkPath(Position(), to);
    return path && Play(*path);
}

bool HandPlay::PushBox(int from, int to) {
    const auto path = BoxPaths(Position(), from).To(to);
    return path && Play(*path);
}

bool HandPlay::Play(std::string_view lurd) {
    if (lurd.empty() || !Replay(Position(), lurd).Played()) return false;
    const std::int64_t begin = cursor_.At();
    for (const char letter : lurd) cursor_.Step(DirectionOf(letter));
    EndGesture(begin);
    return true;
}

// The stops of what gave way to the gesture, or lies within it, go.
void HandPlay::EndGesture(std::int64_t begin) {
    const std::int64_t end = cursor_.At();
    std::erase_if(stops_, [&](std::int64_t stop) {
        return (stop > begin && stop <= end) || stop > cursor_.Moves();
    });
    stops_.insert(std::upper_bound(stops_.begin(), stops_.end(), end), end);
}

bool HandPlay::Undo() {
    const auto stop = std::lower_bound(stops_.begin(), stops_.end(), cursor_.At());
    return cursor_.Seek(stop == stops_.begin() ? 0 : *std::prev(stop));
}

bool HandPlay::Redo() {
    const auto stop = std::upper_bound(stops_.begin(), stops_.end(), cursor_.At());
    return cursor_.Seek(stop == stops_.end() ? cursor_.Moves() : *stop);
}

}  // namespace kavit
