#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "level/board.h"
#include "solver/solver.h"

// The fixed list of searches that are measured.

namespace kavit::bench {

struct Folders {
    std::filesystem::path Own;    // the example levels
    std::filesystem::path Tests;  // the levels for tests, which need not be there
};

struct Case {
    std::string Level;  // file name without ".xsb"
    SolverOptions Options;
    std::int64_t NumPos = 4000000;
};

// Searches that fill millions of positions, both kinds that end with a full store among them.
[[nodiscard]] const std::vector<Case>& SpeedCases();

// Every example level under every search type and hash case: a fingerprint of all counts.
[[nodiscard]] std::vector<Case> FingerprintCases(const Folders& folders);

// The level, when one of the folders has it and it can be read.
[[nodiscard]] std::optional<Board> LoadLevel(const Folders& folders, const std::string& level);

// The level files of a folder, without ".xsb", in order.
[[nodiscard]] std::vector<std::string> LevelsIn(const std::filesystem::path& folder);

}  // namespace kavit::bench
