#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "fuzz/fuzz_case.h"

namespace kavit::test {

// What went through the checks, so that a run that checked nothing shows.
struct FuzzTally {
    std::int64_t Cases = 0;
    std::map<int, std::int64_t> Results;  // solves by result number
    std::int64_t TwinAgreed = 0;          // searches counted by the twin too
    std::int64_t Solvable = 0;            // solves whose level the oracle solved
    std::int64_t Unsolvable = 0;          // whose game it exhausted
    std::int64_t TooBig = 0;              // whose game is too big for it
    std::int64_t Proved = 0;              // fewest moves compared with the oracle's
    std::int64_t PassesStopped = 0;
    std::int64_t PassesFull = 0;
    std::int64_t FewestProved = 0;  // fewest moves of all compared with the oracle's
    std::int64_t FewestBetter = 0;
    std::int64_t FewestStopped = 0;
    std::int64_t FewestFull = 0;

    [[nodiscard]] std::string Text() const;
};

// What is wrong with a case.
struct FuzzFailure {
    std::string What;    // which check; the same for all cases that fail in the same way
    std::string Detail;  // the figures

    [[nodiscard]] bool Failed() const { return !What.empty(); }
};

// Solves, with nothing checked, and says all that it counted and found; and that without what
// depends on the kind of hash table.
std::string SolveText(Solver& solver, const FuzzSolve& solve);
std::string WithoutTable(const std::string& text);

// Solves the case and checks all that can be known about it: with the twin every count of every
// search, with the oracle the result, the pushes and the fewest moves, by playing them the strings,
// and at last the first solve again, which must count as it did.
FuzzFailure CheckCase(const FuzzCase& fuzzCase, FuzzTally& tally);

}  // namespace kavit::test
