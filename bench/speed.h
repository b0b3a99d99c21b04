#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The measurements, as benchmarks of the library that runs them: it repeats, sums up and writes
// JSON (see kavit-bench --help and --benchmark_help). After them this program prints what the
// library has no table for: both programs and all numbers of threads side by side.

namespace kavit::bench {

struct SpeedWishes {
    std::string MoreLevels;    // a folder; "" for none
    std::vector<int> Threads;  // each search with so many
    bool Twin = true;          // the plain twin beside the solver
};

// Returns the exit status: 1 when two searches of a level did not count the same.
int RunSpeed(const SpeedWishes& wishes);

}  // namespace kavit::bench
