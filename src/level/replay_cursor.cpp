#include "level/replay_cursor.h"

#include <algorithm>

#include "level/steps.h"

namespace kavit {

ReplayCursor::ReplayCursor(const Board& start, std::string_view lurd) : start_(start) {
    for (std::uint8_t& code : start_.Cell)
        if (code > kMan && !HoldsMan(code)) code = kFloor;
    const int man = TheMan(start_);
    if (man >= 0) start_.ManPos = static_cast<std::int16_t>(man);
    position_ = start_;
    for (const char letter : lurd) Append(letter);
    // Plays the whole line once to see how far it goes.
    while (man >= 0 && playable_ < Moves()) {
        const char letter = line_[static_cast<std::size_t>(playable_)];
        const int direction = DirectionOf(letter);
        if (direction < 0) break;
        Board after = position_;
        if (StepMan(after, direction) != letter) break;
        position_ = after;
        ++playable_;
    }
    position_ = start_;
}

void ReplayCursor::Append(char letter) {
    line_ += letter;
    if (IsPush(letter)) pushMarks_.push_back(Moves());
}

std::int64_t ReplayCursor::PushesUpTo(std::int64_t move) const {
    return std::upper_bound(pushMarks_.begin(), pushMarks_.end(), move) - pushMarks_.begin();
}

int ReplayCursor::Facing() const {
    return at_ == 0 ? -1 : DirectionOf(line_[static_cast<std::size_t>(at_ - 1)]);
}

bool ReplayCursor::ForwardPush() {
    const auto next = std::upper_bound(pushMarks_.begin(), pushMarks_.end(), at_);
    return Seek(next == pushMarks_.end() ? playable_ : *next);
}

bool ReplayCursor::BackPush() {
    const auto last = std::lower_bound(pushMarks_.begin(), pushMarks_.end(), at_);
    return Seek(last == pushMarks_.begin() ? 0 : *std::prev(last));
}

bool ReplayCursor::Seek(std::int64_t move) {
    const std::int64_t before = at_;
    const std::int64_t to = std::clamp<std::int64_t>(move, 0, playable_);
    while (at_ < to) StepMan(position_, DirectionOf(line_[static_cast<std::size_t>(at_++)]));
    while (at_ > to) TakeBack(position_, line_[static_cast<std::size_t>(--at_)]);
    return at_ != before;
}

bool ReplayCursor::SeekPush(std::int64_t push) {
    return Seek(push <= 0 ? 0 : pushMarks_.at(static_cast<std::size_t>(push - 1)));
}

bool ReplayCursor::Step(int direction) {
    if (TheMan(start_) < 0) return false;
    const char letter = StepMan(position_, direction);
    if (letter == '\0') return false;
    if (at_ == playable_ || line_[static_cast<std::size_t>(at_)] != letter) {
        line_.resize(static_cast<std::size_t>(at_));
        pushMarks_.resize(static_cast<std::size_t>(PushesUpTo(at_)));
        Append(letter);
        playable_ = Moves();
    }
    ++at_;
    return true;
}

}  // namespace kavit
