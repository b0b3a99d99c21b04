#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "level/board.h"
#include "level/collection.h"
#include "solver/solver.h"

namespace kavit::test {

// Levels to solve: in two pushes, and with two boxes of which neither can pass the other.
constexpr const char* kEasy = "#######\n#@ $ .#\n#######\n";
constexpr const char* kUnsolvable = "##########\n#@ $ $ ..#\n##########\n";
// Big enough to be interrupted: an open room with six boxes.
constexpr const char* kLong =
    "############\n#          #\n# $ $ $    #\n#   @      #\n# $ $ $    #\n#          #\n"
    "#     ...  #\n#     ...  #\n#          #\n#          #\n############\n";
// Open floor and fifteen boxes: no machine is through with it in the time that a test takes.
constexpr const char* kEndless =
    "#################\n#...............#\n#               #\n# $ $ $ $ $ $ $ #\n"
    "#               #\n# $ $ $ $ $ $ $ #\n#               #\n#       $       #\n"
    "#       @       #\n#################\n";

// The board of a level that a test wrote down, or of a file; throws when it can't be read.
Board BoardOf(std::string_view text);
Board BoardOfFile(const std::string& path);

// All of a collection that a test wrote down.
Collection CollectionOf(std::string_view text);

// Sets the wall extent and ManPos from the cells, as after reading a level.
void SetExtent(Board& board);

// Stops the solver at its n-th yield, or ends it by a fault; 0 never, -1 before it begins.
class StopAt : public SolverHooks {
  public:
    explicit StopAt(std::int64_t yield, bool fault = false) : at_(yield), fault_(fault) {
        if (yield < 0) RequestStop(StopCause::User);
    }
    void Yield() override {
        if (++Yields != at_) return;
        if (fault_) throw SolverFault("ended by the test");
        RequestStop(StopCause::User);
    }
    std::int64_t Yields = 0;

  private:
    std::int64_t at_;
    bool fault_;
};

// Analyses the board and searches it; throws unless that solves it.
void SearchLevel(Solver& solver, const Board& level, const SolverOptions& options = {});

// Plays both solutions kept; "" or what is wrong with them.
std::string KeptFault(const Solver& solver, const Board& level);

// Reads a whole file; "" when it cannot be read.
std::string ReadWholeFile(const std::string& path);

}  // namespace kavit::test
