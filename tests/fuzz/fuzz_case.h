#pragma once

#include <array>
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
};

// NumPos, Blocks, OptLevel, OptSpecial, SeaType, HashCase, StopAfter, StopPassAfter.
std::array<int*, 8> NumbersOf(FuzzSolve& solve);

struct FuzzCase {
    std::vector<FuzzSolve> Solves;
};

// The case of a seed: any level, any settings, stores from one position up.
FuzzCase RandomCase(std::uint64_t seed, int scale = 1);

// A case as one line without blanks, and back; throws std::runtime_error when the line is no case.
// Every solve is its numbers and a digit for each cell of the board, up to the last that is not
// floor; ";" between solves.
std::string ReplayLine(FuzzCase fuzzCase);
FuzzCase ParseReplayLine(std::string_view line);

}  // namespace kavit::test
