#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "level/board.h"
#include "solver/solver.h"
#include "twin/plain_twin.h"

namespace kavit::test {

inline constexpr int kMixed = 3;  // the HashCase that the twin does not have

// One search to run, by the solver or by its twin.
struct Question {
    Board Level;
    std::int32_t NumPos = 100000;
    int Blocks = 8;
    int OptLevel = 1;
    int SeaType = 0;
    int HashCase = 0;
    bool OptSpecial = false;  // no search sees it, only the optimizer
    int StopAfter = 0;  // sets StopSea at this expanded position; 0 never, -1 before the search

    [[nodiscard]] std::string Text() const;
};

// All that a search counts and keeps. Under Mixed, RHashCnt and HashSize stay 0: they are the
// table's own.
struct Figures {
    int Result = 0;
    std::int64_t nSol = 0;
    std::int64_t BucketCnt = 0;
    std::int64_t PosChanged = 0;
    std::int64_t PosDiscarded = 0;
    std::int64_t HashCnt = 0;
    std::int64_t RHashCnt = 0;
    std::int64_t SeaSteps = 0;
    std::int64_t ForwDepth = 0;
    std::int64_t BackDepth = 0;
    std::int64_t ForwLevelCnt = 0;
    std::int64_t BackLevelCnt = 0;
    int LastSide = 0;
    std::int64_t HashSize = 0;
    bool SqCompact = false;  // false as well while the level is refused
    int NumBoxes = 0;        // 0 while the level is refused
    std::array<int, 2> SolMoves{};
    std::array<int, 2> SolPushes{};
    std::array<std::int64_t, 2> SolFoundAt{};
    std::vector<std::int64_t> Progress;  // the values that were shown
    int Yields = 0;

    [[nodiscard]] std::string Text() const;
    bool operator==(const Figures&) const = default;
};

// Asks the solver or the twin, whose sizes are taken as they are; the other settings are the
// question's.
Figures Ask(Solver& solver, const Question& question);
Figures Ask(PlainTwin& twin, const Question& question);

// Applies the sizes of the question to the solver first; throws when they are refused.
Figures AskWithSizes(Solver& solver, const Question& question);

// What differs in the positions and level runs of a search that both have just made; "" for
// nothing.
std::string StoreDifference(const Solver& solver, const PlainTwin& twin);

}  // namespace kavit::test
