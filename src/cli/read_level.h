#pragma once

#include "cli/level_feed.h"
#include "level/board.h"
#include "level/level_reader.h"

namespace kavit {

// Reads the board of a level. Without `strict`, invalid characters count as spaces and are told of
// on standard error; with it they end the read as what can't be read. A reply that is not Ok has
// the place and the cause, as far as there is one, in Reason.
[[nodiscard]] ReadReply ReadLevel(const LevelEntry& entry, bool strict, Board& board);

}  // namespace kavit
