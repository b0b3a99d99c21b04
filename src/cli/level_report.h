#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "output/recorded_solution.h"
#include "output/solve_report.h"

namespace kavit {

// All that is known of one level at the end, for the terminal as for JSON.
struct LevelReport {
    std::string Name;  // as given, and for a collection FILE#N "Title"
    std::string File;
    std::int64_t Index = 1;
    std::string Title;
    bool OneOfMany = false;  // of a collection, and not chosen by its name

    bool Loaded = false;  // the board was read; if not, Solve holds only Code, LastMsg and Lines
    // In words and with the place: why it could not be read, was refused, or found no room.
    std::string Reason;
    std::string Kind;  // the reason in short, the same for levels with the same trouble
    SolveReport Solve;
    std::optional<RecordedSolution> Recorded;  // it came with the level
    std::string SolFile;                       // the solution file that was written
    std::string SolError;                      // why it could not be
    std::string DumpError;
};

}  // namespace kavit
