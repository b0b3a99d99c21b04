#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "solver/solver.h"

// The searches that are measured, and those that the fingerprint is made of.

namespace kavit::bench {

struct Case {
    std::string File;
    SolverOptions Options;
    std::int64_t NumPos = 4000000;

    // "big_maze/both": the level and the sides.
    [[nodiscard]] std::string Name() const;
};

// Searches of our own levels, from 25,000 positions to two and a half million; after them the
// levels of a folder, when there is one.
[[nodiscard]] std::vector<Case> SpeedCases(const std::string& moreLevels);

// Every example level under every search type and described hash, and some more.
[[nodiscard]] std::vector<Case> FingerprintCases();

// Prints one number made of all counts and strings of the fingerprint's searches. Returns the exit
// status.
int PrintFingerprint();

}  // namespace kavit::bench
