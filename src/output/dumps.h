#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "solver/solver.h"
#include "solver/types.h"

// Two looks into a finished or running search, for debugging the solver: the runs of all
// layers, and one stored position in one line. Texts are made here; the two writers put them into
// files named after the solution's base name.
namespace kavit {

[[nodiscard]] std::string LevelsText(std::string_view baseName, const LayerTables& levels,
                                     const SearchCounters& counters);
[[nodiscard]] std::string PositionText(std::int64_t posIdx, const StoredPosition& position);

// The file name Prefix & "_" & baseName & ".txt".
[[nodiscard]] std::string LevelsFileName(std::string_view prefix, std::string_view baseName);
// baseName & "_Dist.txt" for the file number 12, else baseName & ".txt".
[[nodiscard]] std::string PositionFileName(std::string_view baseName, int fileNo);

// Writes the level table in place of any earlier one. Returns "" or a sentence that says what went
// wrong, and so does the other.
[[nodiscard]] std::string DumpLevels(std::string_view prefix, std::string_view baseName,
                                     const Solver& solver);
// Adds one line to the file.
[[nodiscard]] std::string DumpPosition(std::int64_t posIdx, int fileNo, std::string_view baseName,
                                       const Solver& solver);

}  // namespace kavit
