#include "moves_table.h"

#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include "solver/solver.h"
#include "support/corpus.h"
#include "support/levels.h"

namespace kavit::bench {

namespace {

struct Column {
    const char* Name;
    kavit::OptLevel OptLevel;
    bool Special;
    // Sums over the levels that were solved.
    long Moves1 = 0;
    long Moves0 = 0;
    int Reached = 0;
    int Proved = 0;
    double Search = 0;
    double Pass = 0;
    double Proof = 0;
};

// One level at one setting; false when it is not solved.
bool Solve(Solver& solver, const Board& board, Column& column, int best) {
    SolverHooks hooks;
    Result result =
        solver.AnalyseBoard(board, {.OptLevel = column.OptLevel, .OptSpecial = column.Special});
    if (result == Result::Ok) result = solver.Search(hooks);
    if (result != Result::Ok) return false;
    (void)solver.OptimizeMoves(hooks);
    solver.BuildSolutions();
    column.Moves1 += solver.Kept(1)->SolMoves;
    column.Moves0 += solver.Kept(0)->SolMoves;
    column.Reached += solver.Kept(1)->SolMoves == best ? 1 : 0;
    column.Proved += solver.Counters().MovesProved ? 1 : 0;
    column.Search += solver.Counters().SearchSeconds;
    column.Pass += solver.Counters().PassSeconds;
    column.Proof += solver.Counters().ProofSeconds;
    return true;
}

}  // namespace

int RunMovesTable(const std::string& moreLevels, std::int64_t blocks) {
    std::vector<test::MovesRow> levels = test::ReadMoves(test::OwnLevels());
    if (!moreLevels.empty())
        for (test::MovesRow& row : test::ReadMoves(moreLevels)) levels.push_back(std::move(row));
    std::array<Column, 4> columns = {{{"1", OptLevel::Something, false},
                                      {"2", OptLevel::SomethingMore, false},
                                      {"3", OptLevel::SomethingPlus, false},
                                      {"3 special", OptLevel::SomethingPlus, true}}};
    Solver solver;
    if (!solver.ApplySizes({4000000, blocks, 86400}).Ok) return 4;
    std::printf("%-16s %6s", "level", "best");
    for (const Column& column : columns) std::printf(" | %9s %6s", column.Name, "sol 0");
    std::printf(" | %8s %8s %8s\n", "search s", "pass s", "proof s");
    int solved = 0;
    for (const test::MovesRow& level : levels) {
        if (!level.Moves) continue;
        const Board board = test::BoardOfFile(level.Folder + "/" + level.Level + ".xsb");
        std::string row;
        for (Column& column : columns) {
            if (!Solve(solver, board, column, *level.Moves)) break;
            char cell[64];
            std::snprintf(cell, sizeof cell, " | %9d %6d", solver.Kept(1)->SolMoves,
                          solver.Kept(0)->SolMoves);
            row += cell;
        }
        if (row.empty()) continue;
        ++solved;
        const SearchCounters& c = solver.Counters();
        std::printf("%-16s %6d%s | %8.3f %8.3f %8.3f\n", level.Level.c_str(), *level.Moves,
                    row.c_str(), c.SearchSeconds, c.PassSeconds, c.ProofSeconds);
    }
    std::printf("\n%d levels solved\n%-10s %9s %9s %9s %7s %9s %9s %9s\n", solved, "level",
                "moves 1", "moves 0", "reach best", "proved", "search s", "pass s", "proof s");
    for (const Column& column : columns)
        std::printf("%-10s %9ld %9ld %10d %7d %9.2f %9.2f %9.2f\n", column.Name, column.Moves1,
                    column.Moves0, column.Reached, column.Proved, column.Search, column.Pass,
                    column.Proof);
    return 0;
}

}  // namespace kavit::bench
