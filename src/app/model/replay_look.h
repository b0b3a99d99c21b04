#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "level/replay_cursor.h"

namespace kavit {

// What the bar under the board shows: which solutions there are, and where in one the replay is.
struct ReplayLook {
    bool Visible = false;
    std::vector<std::string> Names;  // of the solutions, by what they are
    int Chosen = 0;
    std::int64_t At = 0;
    std::int64_t Moves = 0;
    std::int64_t PushesAt = 0;
    std::int64_t Pushes = 0;
    std::vector<std::int64_t> PushMarks;
    bool Playing = false;
    int Speed = kNormalSpeed;  // index of kReplaySpeeds
    bool OwnsArrows = false;
};

}  // namespace kavit
