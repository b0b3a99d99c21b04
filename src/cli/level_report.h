#pragma once

#include <string>

#include "level/level_reader.h"
#include "level/result.h"
#include "output/messages.h"
#include "output/solution_file.h"

namespace kavit {

// All that is known of one level at the end, for the terminal as for JSON.
struct LevelReport {
    std::string Name;             // as given
    Result Code = Result::Ok;     // the number that ends the solve; Ok when it is solved
    Result LastMsg = Result::Ok;  // the message shown last: of a solved level 29, 30, 44 or 88
    MessageLines Lines;           // and its texts
    std::string SolvedMessage;    // the left line of message 30
    std::string Fault;            // an internal error, which has no number; "" when there was none
    std::string Reason;           // why it could not be read, with the place
    bool Analysed = false;        // the board was read, and Solve holds it and what came of it
    ReportInput Solve;
    std::string SolFile;   // the solution file that was written
    std::string SolError;  // why it could not be
    std::string DumpError;

    [[nodiscard]] bool Solved() const { return Code == Result::Ok && Fault.empty(); }
};

}  // namespace kavit
