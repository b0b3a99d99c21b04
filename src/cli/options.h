#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/option_values.h"
#include "solver/types.h"

namespace kavit {

// Which levels of a file are wanted; all where nothing is said.
struct LevelChoice {
    NumberRanges Numbers;
    std::string Title;  // a pattern
};

// What the command line asks for.
struct Options {
    std::vector<std::string> Levels;  // files, levels of files, folders, "-"
    LevelChoice Chosen;
    bool List = false;    // print names only
    bool Strict = false;  // an invalid character ends the read

    std::optional<MemoryChoice> Memory;        // instead of MaxPositions
    std::optional<std::int64_t> MaxPositions;  // none: as many as ever
    std::optional<std::int64_t> Blocks;        // none: what the level needs
    std::int64_t MaxTime = 300;
    SolverOptions Solver;

    std::string SolTarget;  // file or folder of solution files; "" for none
    std::string Output;     // the levels again, with solutions; "" for none
    bool Expert = false;    // full report, suffixed names
    bool Json = false;
    std::string DumpPrefix;         // of the files that show the layers of the search; "" for none
    std::int64_t DumpPosition = 0;  // the stored position to show; 0 for none
};

// What to do: solve by the options, or print a text and end.
struct CommandLine {
    std::optional<Options> Command;
    std::string Text;   // help or version, for standard output
    std::string Wrong;  // what is wrong, for standard error
};

[[nodiscard]] CommandLine ReadCommandLine(int argc, const char* const* argv);

}  // namespace kavit
