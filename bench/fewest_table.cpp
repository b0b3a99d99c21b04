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
    double Fewest = 0;
    std::int64_t Positions = 0;
    int Proved = 0;
    int Levels = 0;
    bool Differs = false;
};

void Measure(Solver& solver, const Board& board, const test::MovesRow& known, Sums& sums) {
    SolverHooks hooks;
    Result result = solver.AnalyseBoard(board, {.OptLevel = OptLevel::FewestOfAll});
    if (result == Result::Ok) result = solver.Search(hooks);
    if (result != Result::Ok) return;
    (void)solver.OptimizeMoves(hooks);
    solver.BuildSolutions();
    (void)solver.FewestMoves(hooks);
    const SearchCounters& c = solver.Counters();
    const int moves = solver.Kept(0)->SolMoves;
    const bool differs = c.FewestMovesProved && moves != *known.FewestMoves;
    std::printf("%-16s %5d %5d %5lld%s %10lld %11lld %8.3f %8.3f %6.1f%s\n", known.Level.c_str(),
                solver.Kept(1)->SolMoves, moves, static_cast<long long>(c.MovesLowerBound),
                c.FewestMovesProved ? " " : "?", static_cast<long long>(c.FewestPositions),
                static_cast<long long>(c.FewestOffers), c.SearchSeconds, c.FewestSeconds,
                c.FewestSeconds / c.SearchSeconds, differs ? "  DIFFERS" : "");
    std::fflush(stdout);
    sums.Search += c.SearchSeconds;
    sums.Fewest += c.FewestSeconds;
    sums.Positions += c.FewestPositions;
    sums.Proved += c.FewestMovesProved ? 1 : 0;
    sums.Levels += 1;
    sums.Differs = sums.Differs || differs;
}

}  // namespace

int RunFewestTable(const std::string& moreLevels) {
    std::vector<test::MovesRow> levels = test::ReadMoves(test::OwnLevels());
    if (!moreLevels.empty())
        for (test::MovesRow& row : test::ReadMoves(moreLevels)) levels.push_back(std::move(row));
    Solver solver;
    if (!solver.ApplySizes({4000000, 20, 86400}).Ok) return 4;
    std::printf("%-16s %5s %5s %6s %10s %11s %8s %8s %6s\n", "level", "push", "best", "least",
                "positions", "offers", "search s", "s", "ratio");
    Sums sums;
    for (const test::MovesRow& row : levels) {
        if (!row.FewestMoves) continue;
        Measure(solver, test::BoardOfFile(row.Folder + "/" + row.Level + ".xsb"), row, sums);
    }
    std::printf("\n%d levels, %d proved; %lld positions; %.2f s, the push searches %.2f s\n",
                sums.Levels, sums.Proved, static_cast<long long>(sums.Positions), sums.Fewest,
                sums.Search);
    return sums.Differs ? 1 : 0;
}

}  // namespace kavit::bench
