#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "level/board.h"
#include "level/result.h"
#include "solver/hooks.h"

// The solver, as the window, the command line and other programs use it.
//
//     #include "solver/solver.h"
//
//     kavit::Solver solver;                                  // no memory for positions yet
//     if (!solver.ApplySizes({4000000, 8, 300}).Ok) return;  // positions, boxes, seconds
//     kavit::SolverHooks hooks;                              // derive from it to watch and stop
//     kavit::Result result = solver.AnalyseBoard(board, {});  // refuses with 1, 2, 9 or 14
//     if (result == kavit::Result::Ok) result = solver.Search(hooks);
//     if (result == kavit::Result::Ok) {
//         (void)solver.OptimizeMoves(hooks);  // improves at OptLevel 2 and 3, always harmless
//         solver.BuildSolutions();
//         std::puts(solver.Kept(0).SolString.c_str());
//     }
//
// Any number of solvers may live side by side; each belongs to one thread at a time.

namespace kavit {

class MemorySource;
class PositionStore;
struct LevelTables;

// What the program cannot answer with a result number: a counter that does not fit its field, or a
// solution that does not replay. what() is a sentence for the user. The solver can be used again
// after it.
class SolverFault : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// The sizes of the settings panel. Fields are wide so that anything that a user types arrives
// whole.
struct Sizes {
    std::int64_t NumPos = 4000000;  // positions that the store holds; 1..2147483647
    std::int64_t Blocks = 8;        // most boxes a level may have; 1..32767
    std::int64_t MaxTime = 300;     // seconds; 1..86400

    bool operator==(const Sizes&) const = default;
};

struct ApplyReply {
    bool Ok = true;            // false: refused, and Message says why; the old sizes stand
    bool Reallocated = false;  // the store was allocated anew, and is empty
    std::string_view Message;  // the text for the message box, "" when Ok
};

struct SolverOptions {
    int OptLevel = 1;         // 0 None, 1 Something, 2 Something more, 3 Something plus
    int SeaType = 0;          // 0 both, 1 forward, 2 backward
    int HashCase = 0;         // 0 default, 1 Case 1, 2 Case 2
    bool OptSpecial = false;  // counts at OptLevel 2 and 3 only
};

// One of the two solutions kept: 0 has the fewest moves (then pushes), 1 the fewest pushes (then
// moves). Nothing is kept while SolMoves is 32767.
struct KeptSolution {
    int SolMoves = 32767;
    int SolPushes = 32767;
    int SolPhase = 0;                   // 1 found by the search, 2 by the optimizer
    std::int64_t SolFoundAt = 0;        // nSol when it was kept
    std::int64_t SolFoundAtSearch = 0;  // SolFoundAt when the optimizer started
    // Entry 1 onward: the position reached after each push; a negative entry ends the chain.
    // Entry 0 is not read.
    std::vector<std::int32_t> SolSteps;
    std::string SolString;  // "ldru" steps, "LDRU" pushes
};

inline constexpr std::int64_t kCounterStart = -2147483647;  // where the hash counters begin

struct SearchCounters {
    std::int32_t BucketCnt = 0;     // positions stored
    std::int32_t PosChanged = 0;    // duplicates whose record was improved
    std::int32_t PosDiscarded = 0;  // duplicates dropped because they were no better
    std::int32_t nSol = 0;          // meetings found by the last phase that ran
    std::int32_t nSolSearch = 0;    // meetings found by the search, when the optimizer has run
    std::int64_t HashCnt = kCounterStart;   // positions offered; starts at -2147483647
    std::int64_t RHashCnt = kCounterStart;  // re-probes; starts at -2147483647
    std::int64_t HashCnt2 = kCounterStart;  // second pair of the report; no part moves it
    std::int64_t RHashCnt2 = kCounterStart;
    std::int32_t SeaSteps = 0;  // levels expanded by the search
    int ForwDepth = 0;          // levels expanded forward ("Sea1")
    int BackDepth = 0;          // levels expanded backward ("Sea2")
    int ForwLevelCnt = 0;       // levels expanded whole when the search ended
    int BackLevelCnt = 0;
    int ForwLevel = 0;  // levels that the optimizer is at (messages 25 and 26)
    int BackLevel = 0;
    int LastSide = 0;           // side of the last step: 1 forward, 2 backward
    int OptimumPushes = 0;      // ForwLevelCnt + BackLevelCnt + 1, set by the optimizer
    int SeaPhase = 0;           // 0 none, 1 search, 2 optimizer
    std::int32_t HashSize = 0;  // slots of the hash table, less one
    bool SqCompact = false;     // keys hold compact square numbers
    int NumBoxes = 0;
    double BytesPerPosition = 0;  // key, record and share of the hash table
    double SearchSeconds = 0;
    double PassSeconds = 0;    // optimizer pass
    double ProofSeconds = 0;   // proof of the fewest moves
    bool MovesProved = false;  // solution 1 has the fewest moves that its pushes allow
};

class Solver {
  public:
    Solver();  // takes its memory from the machine
    explicit Solver(MemorySource& memory);
    ~Solver();
    Solver(Solver&&) noexcept;
    Solver& operator=(Solver&&) noexcept;

    // Checks the fields and allocates the store when NumPos or Blocks differ from the sizes in
    // force. Must succeed once before AnalyseBoard.
    [[nodiscard]] ApplyReply ApplySizes(const Sizes& fields);
    [[nodiscard]] const Sizes& AppliedSizes() const;

    // Resets counters and kept solutions, then makes the solver's arrays from the board: Ok,
    // TooManyBoxes, StrangeMapping, AlreadySolved or FrozenBlock.
    [[nodiscard]] Result AnalyseBoard(const Board& board, const SolverOptions& options);

    // After AnalyseBoard said Ok: Ok (solved), NoSolution, OutOfMemory or Stopped. Throws
    // SolverFault.
    [[nodiscard]] Result Search(SolverHooks& hooks);

    // After Search said Ok. Below OptLevel 2 it does nothing and returns GoOn. GoOn: finished;
    // OutOfMemory; Stopped. The kept solutions stay valid in every case. Throws SolverFault.
    [[nodiscard]] Result OptimizeMoves(SolverHooks& hooks);

    // After Search said Ok: writes SolString of both kept solutions and replays them by the rules
    // of the board. Throws SolverFault when a string does not replay.
    void BuildSolutions();

    [[nodiscard]] const KeptSolution& Kept(int k) const;  // k = 0, 1
    [[nodiscard]] const SearchCounters& Counters() const;

    // The state of the last search, for dumps and tests.
    [[nodiscard]] const PositionStore& Store() const;
    [[nodiscard]] const LevelTables& Levels() const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace kavit
