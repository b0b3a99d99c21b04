#include "moves_table.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <map>
#include <sstream>

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

std::map<std::string, int> BestMoves(const Folders& folders) {
    std::map<std::string, int> best;
    std::ifstream file(folders.Tests / "best_moves.tsv");
    std::string line;
    std::getline(file, line);  // titles
    while (std::getline(file, line)) {
        std::istringstream fields(line);
        std::string level;
        int pushes = 0;
        int moves = 0;
        if (fields >> level >> pushes >> moves) best[level] = moves;
    }
    return best;
}

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

int RunMovesTable(const Folders& folders, std::int64_t blocks) {
    const std::map<std::string, int> best = BestMoves(folders);
    if (best.empty()) {
        std::printf("No best_moves.tsv in %s\n", folders.Tests.c_str());
        return 1;
    }
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
    for (const std::string& level : LevelsIn(folders.Tests)) {
        const std::optional<Board> board = LoadLevel(folders, level);
        const auto known = best.find(level);
        if (!board || known == best.end()) continue;
        std::string row;
        for (Column& column : columns) {
            if (!Solve(solver, *board, column, known->second)) break;
            char cell[64];
            std::snprintf(cell, sizeof cell, " | %9d %6d", solver.Kept(1)->SolMoves,
                          solver.Kept(0)->SolMoves);
            row += cell;
        }
        if (row.empty()) continue;
        ++solved;
        const SearchCounters& c = solver.Counters();
        std::printf("%-16s %6d%s | %8.3f %8.3f %8.3f\n", level.c_str(), known->second, row.c_str(),
                    c.SearchSeconds, c.PassSeconds, c.ProofSeconds);
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
