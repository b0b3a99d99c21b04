#pragma once

#include <cstdint>

#include "solver/search/man_walks.h"
#include "solver/search/search_state.h"

namespace kavit {

// What is known of a successor when it meets a stored position of the other side.
struct MeetingOffer {
    std::int32_t Pos = 0;     // the stored position with the same boxes and man region
    std::int32_t Parent = 0;  // the position whose successor met it
    std::int32_t Moves = 0;   // moves of the successor on its own side
    std::uint8_t Tag = 0;     // the successor's side
    int Walk = 0;             // man steps between the two men
    std::int64_t Pushes = 0;  // pushes of the whole path; 0 when they are not known
};

// Scores a meeting as a solution, and keeps it where it beats kept solution 0 (fewest moves, then
// pushes) or 1 (fewest pushes, then moves).
//
// The path is never rebuilt for this. Moves of a stored position are exact on either side: forward
// from the start to the man's square after the push, backward from the man's square before the
// push to the end. So the whole path takes the moves of both halves and one walk between the two
// men. Only a path that may be kept has its chain of positions collected.
//
// The optimizer improves positions that have successors already, whose counts then are out of date.
// There a path that looks good enough is counted again along its chain.
//
// Throws SolverFault where the moves do not fit their field.
void EvalMeeting(SearchState& state, const MeetingOffer& meeting, ManWalks& walks);

// The man moves of a chain of positions, every walk measured.
[[nodiscard]] int CountMoves(const BoardArrays& arrays, const PositionStore& store,
                             const std::vector<std::int32_t>& solSteps, ManWalks& walks);

// Keeps a solution in place of kept solution 0 or 1 or both, where it beats them. Says whether it
// did.
bool KeepIfBetter(SearchState& state, int moves, const std::vector<std::int32_t>& solSteps);

// Marks a, b and everything on their ways to the start positions.
void MarkPath(PositionStore& store, std::int32_t a, std::int32_t b);

}  // namespace kavit
