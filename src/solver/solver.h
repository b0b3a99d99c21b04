#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "level/board.h"
#include "level/result.h"
#include "solver/hooks.h"
#include "solver/types.h"

// The solver, as the window, the command line and other programs use it. A complete use of it:
//
//     #include "solver/solver.h"
//
//     kavit::Solver solver;                                  // no memory for positions yet
//     if (!solver.ApplySizes({4000000, 8, 300}).Ok) return;  // positions, boxes, seconds
//     kavit::SolverHooks hooks;                              // derive from it to watch and stop
//     kavit::Result result = solver.AnalyseBoard(board, {});  // refuses with 1, 2, 9 or 14
//     if (result == kavit::Result::Ok) result = solver.Search(hooks);
//     if (result == kavit::Result::Ok) (void)solver.OptimizeMoves(hooks);
//     if (solver.Kept(0)) {  // solved, or stopped with a solution in hand
//         solver.BuildSolutions();
//         if (result == kavit::Result::Ok) (void)solver.FewestMoves(hooks);
//         std::puts(solver.Kept(0)->SolString.c_str());
//     }
//
// The order of the calls, by what the solver holds (Stage):
//
//   NoStore --ApplySizes--> Sized --AnalyseBoard--> Analysed --Search--> Solved
//   Solved --OptimizeMoves--> Optimized --FewestMoves--> Lent: the positions have made room
//   Analysed --Search--> StoppedWithSolution: solutions are kept, though not all were seen
//   Analysed --Search--> Ended: no solution, none in time, or a fault
//
//   ApplySizes      answered always; back to Sized when it takes or loses a store
//   AnalyseBoard    in every state but NoStore; back to Sized where it refuses the board
//   Search          in Analysed, OptimizeMoves in Solved: once
//   BuildSolutions  in Solved, Optimized and StoppedWithSolution
//   FewestMoves     in Solved and Optimized, once the solutions are built
//
// A call out of order throws SolverFault and changes nothing. What a search counts never depends on
// what the solver did before it, a fault included. Any number of solvers may live side by side, in
// one thread or in several; each belongs to one thread at a time.

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
    // force. Whatever was searched before is forgotten then, also when there is not enough memory
    // and the old sizes stay in force.
    [[nodiscard]] ApplyReply ApplySizes(const Sizes& fields);
    [[nodiscard]] const Sizes& AppliedSizes() const;
    [[nodiscard]] SolverState Stage() const;
    // The bytes that a store could take now, the one in force included; store_size.h turns them
    // into positions.
    [[nodiscard]] std::uint64_t MostBytes() const;

    // Forgets the last search and makes the solver's arrays from the board: Ok, TooManyBoxes,
    // StrangeMapping, AlreadySolved or FrozenBlock. Throws SolverFault where an option is none.
    [[nodiscard]] Result AnalyseBoard(const Board& board, const SolverOptions& options);

    // Ok (solved), NoSolution, OutOfMemory or Stopped. A search that is stopped in its last layer
    // may have solutions; they have the fewest pushes, and not all of their number were seen.
    [[nodiscard]] Result Search(SolverHooks& hooks);

    // Fewer moves for the kept solutions, which stay valid however it ends. GoOn: finished, or
    // nothing to do below OptLevel SomethingMore; OutOfMemory; Stopped.
    [[nodiscard]] Result OptimizeMoves(SolverHooks& hooks);

    // Writes SolString of both kept solutions and replays them by the rules of the board. Throws
    // SolverFault when a string does not replay.
    void BuildSolutions();

    // The fewest moves of any solution, whatever its pushes, and their proof.
    // GoOn: finished, or nothing to do below OptLevel FewestOfAll; OutOfMemory; Stopped. Solution 0
    // becomes the better one where one is found, and MovesLowerBound says what is proved, however
    // it ends. The positions of the search have to make room.
    [[nodiscard]] Result FewestMoves(SolverHooks& hooks);

    // Answered at any time: what the last search has kept, counted and stored. A position is asked
    // for by its number, 1..BucketCnt; there is a SolverFault for any other.
    [[nodiscard]] const std::optional<KeptSolution>& Kept(int k) const;  // k = 0, 1
    [[nodiscard]] const SearchCounters& Counters() const;
    [[nodiscard]] StoredPosition Position(std::int64_t pos) const;
    [[nodiscard]] const LayerTables& Layers() const;

  private:
    friend void SetWorthThreads(Solver& solver, int chunks);  // search/worth_threads.h
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace kavit
