#include <cstdint>
#include <cstdio>

#include "cases.h"
#include "support/levels.h"

namespace kavit::bench {

int PrintFingerprint() {
    Solver solver;
    std::uint64_t print = 0;
    int searches = 0;
    for (const Case& item : FingerprintCases()) {
        const Board board = test::BoardOfFile(item.File);
        if (!solver.ApplySizes({item.NumPos, 8, 300}).Ok) return 4;
        SolverHooks hooks;
        Result result = solver.AnalyseBoard(board, item.Options);
        if (result == Result::Ok) result = solver.Search(hooks);
        if (result == Result::Ok) {
            (void)solver.OptimizeMoves(hooks);
            solver.BuildSolutions();
        }
        const SearchCounters& c = solver.Counters();
        constexpr std::int64_t kUnknown = 32767;
        constexpr std::int64_t kHashStart = -2147483647;  // where the report's hash counters begin
        const auto& fewestMoves = solver.Kept(0);
        const auto& fewestPushes = solver.Kept(1);
        for (const std::int64_t count :
             {static_cast<std::int64_t>(result), c.BucketCnt, c.HashCnt + kHashStart,
              c.RHashCnt + kHashStart, c.PosChanged, c.PosDiscarded, c.nSol, c.SeaSteps,
              fewestMoves ? fewestMoves->SolMoves : kUnknown,
              fewestPushes ? fewestPushes->SolMoves : kUnknown,
              fewestPushes ? fewestPushes->SolPushes : kUnknown})
            print = (print ^ static_cast<std::uint64_t>(count)) * 0x100000001b3U;
        if (result == Result::Ok)
            for (const char letter : fewestMoves->SolString + fewestPushes->SolString)
                print = (print ^ static_cast<std::uint64_t>(letter)) * 0x100000001b3U;
        ++searches;
    }
    std::printf("%d searches\nBench: %llu\n", searches, static_cast<unsigned long long>(print));
    return 0;
}

}  // namespace kavit::bench
