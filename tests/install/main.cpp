#include <cstdio>

#include "level/level_reader.h"
#include "solver/solver.h"

int main(int, char** argv) {
    kavit::Board board;
    if (!kavit::ReadLevelFile(argv[1], board, {}).Loaded()) return 1;
    kavit::Solver solver;
    if (!solver.ApplySizes({.NumPos = 1000, .Blocks = 1}).Ok) return 2;
    kavit::SolverHooks hooks;
    if (solver.AnalyseBoard(board, {}) != kavit::Result::Ok) return 3;
    if (solver.Search(hooks) != kavit::Result::Ok) return 4;
    solver.BuildSolutions();
    std::puts(solver.Kept(0)->SolString.c_str());
}
