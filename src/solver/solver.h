#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "level/board.h"
#include "level/result.h"
#include "solver/hooks.h"
#include "solver/types.h"

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
//         (void)solver.OptimizeMoves(hooks);  // improves from OptLevel SomethingMore on
//         solver.BuildSolutions();
//         std::puts(solver.Kept(0)->SolString.c_str());
//     }
//
// Any number of solvers may live side by side; each belongs to one thread at a time.

namespace kavit {

class MemorySource;

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
    // The bytes that a store could take now, the one in force included; store_size.h turns them
    // into positions.
    [[nodiscard]] std::uint64_t MostBytes() const;

    // Resets counters and kept solutions, then makes the solver's arrays from the board: Ok,
    // TooManyBoxes, StrangeMapping, AlreadySolved or FrozenBlock.
    [[nodiscard]] Result AnalyseBoard(const Board& board, const SolverOptions& options);

    // After AnalyseBoard said Ok: Ok (solved), NoSolution, OutOfMemory or Stopped. Throws
    // SolverFault.
    [[nodiscard]] Result Search(SolverHooks& hooks);

    // After Search said Ok. Below OptLevel SomethingMore it does nothing and returns GoOn. GoOn:
    // finished; OutOfMemory; Stopped. The kept solutions stay valid in every case. Throws
    // SolverFault.
    [[nodiscard]] Result OptimizeMoves(SolverHooks& hooks);

    // After Search said Ok: writes SolString of both kept solutions and replays them by the rules
    // of the board. Throws SolverFault when a string does not replay.
    void BuildSolutions();

    // After BuildSolutions: the fewest moves of any solution, whatever its pushes, and their proof.
    // GoOn: finished, or nothing to do below OptLevel FewestOfAll; OutOfMemory; Stopped. Solution 0
    // becomes the better one where one is found, and MovesLowerBound says what is proved, however it
    // ends. The positions of the search have to make room.
    [[nodiscard]] Result FewestMoves(SolverHooks& hooks);

    [[nodiscard]] const std::optional<KeptSolution>& Kept(int k) const;  // k = 0, 1
    [[nodiscard]] const SearchCounters& Counters() const;

    // What the last search has stored: position 1..BucketCnt, and the runs of its layers. Throws
    // SolverFault where there is no such position.
    [[nodiscard]] StoredPosition Position(std::int64_t pos) const;
    [[nodiscard]] const LayerTables& Layers() const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace kavit
