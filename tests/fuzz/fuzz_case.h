#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "support/figures.h"

// What one run of the fuzzer asks: up to three solves, one after the other, of one solver.

namespace kavit::test {

struct FuzzSolve {
    Question Ask;
    int StopPassAfter = 0;  // sets StopSea at this yield of the optimizer; 0 never

    bool operator==(const FuzzSolve& other) const;
};

struct FuzzCase {
    std::vector<FuzzSolve> Solves;

    bool operator==(const FuzzCase&) const = default;
};

// The case of a seed: any level, any settings, stores from one position up.
FuzzCase RandomCase(std::uint64_t seed);

// A case as one line without blanks, and back; throws std::runtime_error when the line is no case.
// Every solve is its settings and the rows of its level from the top of the board:
// NumPos,Blocks,OptLevel,OptSpecial,SeaType,HashCase,StopAfter,StopPassAfter,row/row/row
// with "-" for floor and the cell codes that no level file has as digits; ";" between solves.
std::string ReplayLine(const FuzzCase& fuzzCase);
FuzzCase ParseReplayLine(std::string_view line);

}  // namespace kavit::test
