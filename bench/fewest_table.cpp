#include "fewest_table.h"

#include <cstdio>
#include <utility>
#include <vector>

#include "solver/solver.h"
#include "support/corpus.h"
#include "support/levels.h"

namespace kavit::bench {

namespace {

struct Sums {
    double Search = 0;
    std::vector<double> Fewest;  // by number of threads
    std::int64_t Positions = 0;
    int Proved = 0;
    int Levels = 0;
    bool Differs = false;
};

// Solves the level and proves its moves; false when there is nothing to prove.
bool Solve(Solver& solver, const Board& board, int threads) {
    SolverHooks hooks;
    Result result =
        solver.AnalyseBoard(board, {.OptLevel = OptLevel::FewestOfAll, .Threads = threads});
    if (result == Result::Ok) result = solver.Search(hooks);
    if (result != Result::Ok) return false;
    (void)solver.OptimizeMoves(hooks);
    solver.BuildSolutions();
    (void)solver.FewestMoves(hooks);
    return true;
}

void Measure(Solver& solver, const test::MovesRow& known, const std::vector<int>& threads,
             Sums& sums) {
    const Board board = test::BoardOfFile(known.Folder + "/" + known.Level + ".xsb");
    double search = 0;  // with the first number of threads, as the ratio
    std::vector<double> seconds;
    for (const int count : threads) {
        if (!Solve(solver, board, count)) return;
        const SearchCounters& c = solver.Counters();
        if (seconds.empty()) search = c.SearchSeconds;
        seconds.push_back(c.FewestSeconds);
        const bool right = solver.Kept(0)->SolMoves == *known.FewestMoves;
        sums.Differs = sums.Differs || (c.FewestMovesProved && !right);
    }
    const SearchCounters& c = solver.Counters();
    std::printf("%-16s %5d %5d %5lld%s %10lld %11lld %8.3f", known.Level.c_str(),
                solver.Kept(1)->SolMoves, solver.Kept(0)->SolMoves,
                static_cast<long long>(c.MovesLowerBound), c.FewestMovesProved ? " " : "?",
                static_cast<long long>(c.FewestPositions), static_cast<long long>(c.FewestOffers),
                search);
    for (std::size_t i = 0; i < seconds.size(); ++i) {
        std::printf(" %8.3f", seconds[i]);
        sums.Fewest[i] += seconds[i];
    }
    std::printf(" %6.1f\n", seconds.front() / search);
    std::fflush(stdout);
    sums.Search += search;
    sums.Positions += c.FewestPositions;
    sums.Proved += c.FewestMovesProved ? 1 : 0;
    sums.Levels += 1;
}

}  // namespace

int RunFewestTable(const std::string& moreLevels, const std::vector<int>& threads) {
    std::vector<test::MovesRow> levels = test::ReadMoves(test::OwnLevels());
    if (!moreLevels.empty())
        for (test::MovesRow& row : test::ReadMoves(moreLevels)) levels.push_back(std::move(row));
    Solver solver;
    if (!solver.ApplySizes({4000000, 20, 86400}).Ok) return 4;
    std::printf("%-16s %5s %5s %6s %10s %11s %8s", "level", "push", "best", "least", "positions",
                "offers", "search s");
    for (const int count : threads) std::printf(" %2d thr s", count);
    std::printf("  ratio\n");
    Sums sums;
    sums.Fewest.resize(threads.size());
    for (const test::MovesRow& row : levels)
        if (row.FewestMoves) Measure(solver, row, threads, sums);
    std::printf("\n%d levels, %d proved; %lld positions; the push searches %.2f s", sums.Levels,
                sums.Proved, static_cast<long long>(sums.Positions), sums.Search);
    for (std::size_t i = 0; i < threads.size(); ++i)
        std::printf(", %d threads %.2f s", threads[i], sums.Fewest[i]);
    std::printf("%s\n", sums.Differs ? "; an answer DIFFERS" : "");
    return sums.Differs ? 1 : 0;
}

}  // namespace kavit::bench
