#pragma once

#include <cstdint>
#include <map>
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
    int OptSpecial = 0;  // no search sees it, only the optimizer
    int StopAfter = 0;   // sets StopSea at this expanded position; 0 never, -1 before the search

    [[nodiscard]] std::string Text() const;
};

// All that a search counts and keeps, by name. Under Mixed, RHashCnt and HashSize stay 0: they are
// the table's own.
struct Figures {
    int Result = 0;
    std::map<std::string, std::int64_t> Counts;
    std::vector<std::int64_t> Progress = {};  // the values that were shown

    std::int64_t operator[](const char* name) const { return Counts.at(name); }
    [[nodiscard]] std::string Text() const;
    bool operator==(const Figures&) const = default;
};

// Asks the solver or the twin, whose sizes are taken as they are; the other settings are the
// question's.
Figures Ask(Solver& solver, const Question& question);
Figures Ask(PlainTwin& twin, const Question& question);

// Applies the sizes of the question to the solver first; throws when they are refused.
Figures AskWithSizes(Solver& solver, const Question& question);

// All that a solver counts and keeps, and all that it stores, as text.
std::string KeptText(const Solver& solver);
std::string StoreText(const Solver& solver);

// A whole solve, or what a stop or a fault leaves of it, to the last stored position.
std::string WholeText(Solver& solver, const Board& level, const SolverOptions& options,
                      SolverHooks& hooks);

// What differs in the positions and level runs of a search that both have just made; "" for
// nothing.
std::string StoreDifference(const Solver& solver, const PlainTwin& twin);

}  // namespace kavit::test
