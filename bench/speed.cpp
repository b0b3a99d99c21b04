#include "speed.h"

#include <cstdio>
#include <ctime>

#include "random_read.h"
#include "twin/plain_twin.h"

namespace kavit::bench {

namespace {

struct Measured {
    int Result = 0;
    double Seconds = 0;
    std::int64_t Offered = 0;
    std::int64_t Reprobes = 0;
    std::int64_t Stored = 0;
};

// Seconds of processor time of this process: what else runs on the machine does not count.
double CpuSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

Measured RunSolver(Solver& solver, const Case& item, const Board& board) {
    SolverHooks hooks;
    Result result = solver.AnalyseBoard(board, item.Options);
    const double begin = CpuSeconds();
    if (result == Result::Ok) result = solver.Search(hooks);
    const double seconds = CpuSeconds() - begin;
    const SearchCounters& counters = solver.Counters();
    return {static_cast<int>(result), seconds, counters.HashCnt, counters.RHashCnt,
            counters.BucketCnt};
}

Measured RunTwin(const Case& item, const Board& board) {
    PlainTwin twin(static_cast<std::int32_t>(item.NumPos), 8,
                   static_cast<int>(item.Options.OptLevel), static_cast<int>(item.Options.SeaType),
                   static_cast<int>(item.Options.HashCase.value_or(HashCase::Default)));
    const double begin = CpuSeconds();
    const int result = twin.Solve(board);
    return {result, CpuSeconds() - begin, twin.HashCnt, twin.RHashCnt, twin.BucketCnt};
}

bool SameCounts(const Measured& a, const Measured& b) {
    return a.Result == b.Result && a.Offered == b.Offered && a.Reprobes == b.Reprobes &&
           a.Stored == b.Stored;
}

double NsEach(const Measured& measured) {
    return measured.Offered == 0 ? 0
                                 : measured.Seconds * 1e9 / static_cast<double>(measured.Offered);
}

const char* SideName(SeaType seaType) {
    switch (seaType) {
        case SeaType::Forward:
            return "forward";
        case SeaType::Backward:
            return "backward";
        case SeaType::Both:
            break;
    }
    return "both";
}

}  // namespace

int RunSpeed(const Folders& folders, const std::string& only, bool withTwin) {
    Solver solver;
    int status = 0;
    double solverSeconds = 0;
    double twinSeconds = 0;
    double offered = 0;
    std::printf("%-16s %-8s %6s %9s %10s %8s %8s %8s %8s %8s %6s\n", "level", "side", "result",
                "positions", "successors", "first s", "s", "M/s", "ns each", "twin s", "ratio");
    for (const Case& item : SpeedCases()) {
        if (item.Level.find(only) == std::string::npos) continue;
        const std::optional<Board> board = LoadLevel(folders, item.Level);
        if (!board) {
            std::printf("%-16s is not there: skipped\n", item.Level.c_str());
            continue;
        }
        if (!solver.ApplySizes({item.NumPos, 8, 300}).Ok) return 4;
        // The first search also waits for its memory, which the kernel hands out page by page as
        // it is touched. The twin's is touched before its clock starts, so it meets the second.
        const double first = RunSolver(solver, item, *board).Seconds;
        const Measured fast = RunSolver(solver, item, *board);
        std::printf("%-16s %-8s %6d %9lld %10lld %8.3f %8.3f %8.2f %8.1f", item.Level.c_str(),
                    SideName(item.Options.SeaType), fast.Result,
                    static_cast<long long>(fast.Stored), static_cast<long long>(fast.Offered),
                    first, fast.Seconds, 1e3 / NsEach(fast), NsEach(fast));
        solverSeconds += fast.Seconds;
        offered += static_cast<double>(fast.Offered);
        if (withTwin) {
            std::fflush(stdout);
            const Measured plain = RunTwin(item, *board);
            const bool same = SameCounts(fast, plain);
            twinSeconds += plain.Seconds;
            std::printf(" %8.3f %6.1f%s", plain.Seconds, plain.Seconds / fast.Seconds,
                        same ? "" : "  COUNTS DIFFER");
            if (!same) status = 1;
        }
        std::printf("\n");
        std::fflush(stdout);
    }
    if (offered == 0) return status;
    const double bytes = solver.Counters().BytesPerPosition;
    const double read = RandomReadNs(static_cast<std::size_t>(bytes * 4e6));
    const double each = solverSeconds * 1e9 / offered;
    std::printf("\nall: %.2f s, %.2f million successors a second, %.1f ns each\n", solverSeconds,
                1e3 / each, each);
    if (withTwin)
        std::printf("plain twin: %.2f s, %.2f million a second; ratio %.1f\n", twinSeconds,
                    offered / twinSeconds / 1e6, twinSeconds / solverSeconds);
    std::printf("bytes per position: %.2f (positions up to 8 boxes)\n", bytes);
    std::printf(
        "one random read in a table of the same size: %.1f ns; a successor costs %.2f reads\n",
        read, each / read);
    return status;
}

int RunFingerprint(const Folders& folders) {
    Solver solver;
    std::uint64_t print = 0;
    int searches = 0;
    for (const Case& item : FingerprintCases(folders)) {
        const std::optional<Board> board = LoadLevel(folders, item.Level);
        if (!board || !solver.ApplySizes({item.NumPos, 8, 300}).Ok) return 1;
        SolverHooks hooks;
        Result result = solver.AnalyseBoard(*board, item.Options);
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
    return searches > 0 ? 0 : 1;
}

}  // namespace kavit::bench
