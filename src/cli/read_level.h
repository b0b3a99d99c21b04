#pragma once

#include "cli/level_list.h"
#include "level/board.h"
#include "level/level_reader.h"
#include "output/solve_session.h"

namespace kavit {

// Reads one level of the list. Without `strict`, invalid characters count as spaces and are told of
// on standard error; with it they end the read as what can't be read. When the session is
// asked to stop while standard input is waited for, the answer is Stopped. A reply that is not Ok
// has the place and the cause, as far as there is one, in Reason.
[[nodiscard]] ReadReply ReadLevel(const LevelSource& source, bool strict,
                                  const SolveSession& session, Board& board);

}  // namespace kavit
