#pragma once

#include <cstdint>

namespace kavit {

// Every outcome of the program is one of these numbers, and the number is also the number of the
// message that shows it (output/messages.h). GoOn is used inside the solver only.
enum class Result : std::int16_t {
    GoOn = -1,
    Ok = 0,              // success; of a search: the two sides met
    TooManyBoxes = 1,    // more boxes than Blocks
    StrangeMapping = 2,  // counts do not fit, or the level is open
    NoSolution = 3,      // one side is exhausted and no insertion was refused
    OutOfMemory = 4,     // the store is full
    Thinking = 5,        // search progress
    AnimProgress = 6,    // one animation step
    Stopped = 8,         // StopSea was set, by the user or by the time limit
    AlreadySolved = 9,   // every box stands on a goal
    CanBuildBoard = 10,
    CanEditBoard = 11,
    CanCopy = 12,  // also: an import was cancelled at an invalid character
    CanPaste = 13,
    FrozenBlock = 14,              // a box is stuck at the start
    ImprovingMoves = 25,           // optimizer progress, replay of the stored levels
    BeyondOptimum = 26,            // optimizer progress, levels beyond the fewest pushes
    BestSoFar = 28,                // a meeting was evaluated
    BestSolution = 29,             // solved, with the optimizer
    Solution = 30,                 // solved, without the optimizer
    OutOfMemoryWithSolution = 44,  // the optimizer filled the store
    StartUp = 77,
    Editing = 78,
    LevelOpened = 79,
    StoppedWithSolution = 88,   // the optimizer was stopped
    SolutionFound = 91,         // first meeting of the two sides
    NothingToOpen = 101,        // empty file name
    LineTooLong = 102,          // a row reaches column 50
    TooManyLines = 103,         // more than 30 rows in a file
    TooWide = 104,              // walls span 20 columns or more
    TooHigh = 105,              // walls span 18 rows or more; pasted text of more than 30 lines
    CantOpen = 106,             // the file can't be opened or read
    SolutionInClipboard = 150,  // no solution file was asked for
};

}  // namespace kavit
