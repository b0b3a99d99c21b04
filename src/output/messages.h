#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "level/result.h"
#include "solver/types.h"

// The catalogue of status messages. Every outcome of the program is a message number; the two
// status lines of that number are fixed words around the values of a few counters.
namespace kavit {

class Solver;
struct SolveReport;

// What the texts are made of.
struct MessageValues {
    std::int64_t Blocks = 0;
    std::int64_t SeaSteps = 0;
    std::int64_t AnimPushes = 0;
    std::int64_t AnimMoves = 0;
    std::array<std::int64_t, 2> SolMoves{};
    std::array<std::int64_t, 2> SolPushes{};
    std::int64_t nSol = 0;
    std::int64_t ForwLevel = 0;
    std::int64_t BackLevel = 0;
    bool TimeOut = false;
};

// All but the animation's counts: of a solver, also from inside one of its hooks, and of a report.
[[nodiscard]] MessageValues ReadValues(const Solver& solver, StopCause cause);
[[nodiscard]] MessageValues ReadValues(const SolveReport& report);

// The texts of one message. A line without a value stays as it is on the screen; "" clears it.
struct MessageLines {
    std::optional<std::string> Left;
    std::optional<std::string> Right;
};

class MessageCatalogue {
  public:
    // The texts of any number; message 28 rebuilds BestSolText on the way, which message 25 shows
    // as it was built last.
    [[nodiscard]] MessageLines ShowMsg(int number, const MessageValues& values);
    [[nodiscard]] MessageLines ShowMsg(Result number, const MessageValues& values) {
        return ShowMsg(static_cast<int>(number), values);
    }

  private:
    std::string bestSolText_;
};

}  // namespace kavit
