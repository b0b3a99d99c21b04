#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "level/board.h"

namespace kavit {

// Undo and redo without limit over states that are kept whole: a Board is a third of a kilobyte,
// so that a thousand strokes are a third of a megabyte.
template <class State>
class History {
  public:
    explicit History(State first = {}) : states_{std::move(first)} {}

    [[nodiscard]] const State& Now() const { return states_[at_]; }
    [[nodiscard]] bool CanUndo() const { return at_ > 0; }
    [[nodiscard]] bool CanRedo() const { return at_ + 1 < states_.size(); }

    // A change is complete. What was undone before it is gone; a state equal to the present one is
    // no change.
    void Note(const State& state) {
        if (state == Now()) return;
        states_.resize(++at_, states_.front());
        states_.push_back(state);
    }
    // Both answer the state that holds then, and leave it where there is nothing to do.
    const State& Undo() {
        if (CanUndo()) --at_;
        return Now();
    }
    const State& Redo() {
        if (CanRedo()) ++at_;
        return Now();
    }

  private:
    std::vector<State> states_;
    std::size_t at_ = 0;
};

using BoardHistory = History<Board>;

}  // namespace kavit
