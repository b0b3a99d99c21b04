#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "level/board.h"
#include "level/result.h"
#include "output/messages.h"
#include "solver/solver.h"

// One solve as values: what was asked, and what came of it. The report file, the text view, JSON
// and the window read nothing else, so they cannot tell different stories of the same solve.
namespace kavit {

// As the command line and JSON call it.
[[nodiscard]] inline std::string_view HashName(HashCase hash) {
    constexpr std::array<std::string_view, 4> kNames = {"default", "case1", "case2", "mixed"};
    return kNames.at(static_cast<std::size_t>(hash));
}

struct SolveRequest {
    Board Level = {};
    SolverOptions Options = {};
    std::int64_t MaxTime = 300;  // seconds

    std::string LevelName = {};  // "" for a board that was drawn or imported
    bool BoardImported = false;  // drawn or imported
    bool BoardMoved = false;     // shifted, mirrored or turned since it was read
    bool HideExpert = true;      // plain names and a short report
};

struct SolveReport {
    SolveRequest Request;

    Result Code = Result::Ok;     // what ended it: Ok (solved), 1, 2, 9, 14, 3, 4 or 8
    Result LastMsg = Result::Ok;  // the message to show at the end: Code, or 29, 30, 44, 88
    MessageLines Lines;           // and its texts
    // What ended it early: the search (Code 8 or 4), or the optimizer of a solved level (Code Ok).
    StopCause Cause = StopCause::No;
    std::string Fault;  // an internal error, which has no number; "" when there was none

    // Solution 0 has the fewest moves known, solution 1 the fewest pushes. Both or neither are
    // there, each with a SolString that was replayed. A search that was stopped may have met
    // solutions already: then they are here although Code is 8.
    std::array<std::optional<KeptSolution>, 2> Kept;
    bool PushesProved = false;       // no solution has fewer pushes than solution 1
    bool MovesProved = false;        // none of as many pushes has fewer moves
    bool FewestMovesProved = false;  // no solution at all has fewer moves than solution 0
    std::optional<std::int64_t> PushesLowerBound;  // proved, of every solution
    std::optional<std::int64_t> MovesLowerBound;

    SearchCounters Counters;
    kavit::Sizes Sizes;
    double SeaStart = 0;  // of the watch; seconds since midnight
    double LastTick = 0;

    [[nodiscard]] bool HasSolution() const { return Kept[0].has_value(); }
    // Solution 1 gets a line of its own only when its moves differ.
    [[nodiscard]] bool HasTwoSolutions() const {
        return HasSolution() && Kept[0]->SolMoves != Kept[1]->SolMoves;
    }
    // The level was refused before any search.
    [[nodiscard]] bool Refused() const {
        return Code == Result::TooManyBoxes || Code == Result::StrangeMapping ||
               Code == Result::AlreadySolved || Code == Result::FrozenBlock;
    }
    // A longer solve might have found more.
    [[nodiscard]] bool EndedEarly() const { return Cause != StopCause::No || !Fault.empty(); }
};

}  // namespace kavit
