#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "level/replay_cursor.h"

namespace kavit {

// A level that is played by hand: a line of moves that grows where its cursor stands.
//
// Undo and redo go by what the player did: a key, a walk or a push by the mouse is one of them, of
// one or of many moves. They may also go by push. What was undone can be redone until a different
// move takes its place; Restart is an undo of everything.
class HandPlay {
  public:
    HandPlay() = default;
    explicit HandPlay(const Board& start) : cursor_(start, "") {}

    [[nodiscard]] const ReplayCursor& Cursor() const { return cursor_; }
    [[nodiscard]] const Board& Position() const { return cursor_.Position(); }
    // What was played up to the position.
    [[nodiscard]] std::string Played() const;
    [[nodiscard]] std::int64_t Moves() const { return cursor_.At(); }
    [[nodiscard]] std::int64_t Pushes() const { return cursor_.PushesAt(); }
    [[nodiscard]] bool Solved() const;
    [[nodiscard]] bool CanUndo() const { return cursor_.At() > 0; }
    [[nodiscard]] bool CanRedo() const { return !cursor_.AtEnd(); }

    // All answer whether the position changed; what the rules forbid changes nothing.
    bool Step(int direction);
    bool Walk(int to);
    bool PushBox(int from, int to);
    // Plays a line of moves on from the position, whole or not at all.
    bool Play(std::string_view lurd);

    bool Undo();
    bool Redo();
    bool UndoPush() { return cursor_.BackPush(); }
    bool RedoPush() { return cursor_.ForwardPush(); }
    bool Restart() { return cursor_.First(); }

  private:
    void EndGesture(std::int64_t begin);

    ReplayCursor cursor_;
    std::vector<std::int64_t> stops_;  // moves played at the end of each gesture, increasing
};

}  // namespace kavit
