#pragma once

#include <cstdint>
#include <random>

#include "level/board.h"

namespace kavit::test {

// Seeded random numbers that come out the same with every library.
class Random {
  public:
    explicit Random(std::uint64_t seed) : engine_(seed) {}
    // A number from low to high, both included.
    int Pick(int low, int high);
    // True so many times in a hundred.
    bool Percent(int chance) { return Pick(0, 99) < chance; }

  private:
    std::mt19937_64 engine_;
};

// A random small level, some thousands of positions at most. Most of them are made by pulling
// boxes from their goals, so that many have a solution. Among them are levels that are open, touch
// the edges of the board, fall into several regions, have boxes and goals outside the man's region
// or cells above 255, wrong counts, and some that are solved already.
// A scale of 2 doubles the rooms, for tests that need no exhaustive search.
Board RandomLevel(std::uint64_t seed, int scale = 1);

}  // namespace kavit::test
