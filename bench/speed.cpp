#include "speed.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <map>
#include <optional>
#include <utility>

#include "cases.h"
#include "random_read.h"
#include "support/levels.h"
#include "twin/plain_twin.h"

namespace kavit::bench {

namespace {

constexpr int kTwin = 0;  // in place of a number of threads

// What a search counts: the same for every number of threads, and for the twin.
struct Counted {
    int Result = 0;
    std::int64_t Stored = 0;
    std::int64_t Offered = 0;
    std::int64_t Reprobes = 0;

    bool operator==(const Counted&) const = default;
};

// The searches of one level, by the number of threads.
struct Row {
    std::string Name;
    std::optional<Counted> Counts;
    bool Differ = false;
    std::map<int, double> Seconds;  // the least of all repetitions
};

void Report(benchmark::State& state, Row& row, int threads, const Counted& counted,
            double seconds) {
    state.SetIterationTime(seconds);
    if (row.Counts && *row.Counts != counted) row.Differ = true;
    row.Counts = counted;
    if (row.Differ) state.SkipWithError("counts differ from an earlier search of the level");
    const auto [at, first] = row.Seconds.try_emplace(threads, seconds);
    if (!first && seconds < at->second) at->second = seconds;
    state.counters["positions"] = static_cast<double>(counted.Stored);
    state.counters["offers"] = static_cast<double>(counted.Offered);
    state.counters["ns/offer"] = seconds * 1e9 / static_cast<double>(counted.Offered);
    state.counters["looks/offer"] =
        1 + static_cast<double>(counted.Reprobes) / static_cast<double>(counted.Offered);
}

double Now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

// The search alone: the board is analysed before, and the store has been used, so that the kernel
// need not find the memory while the clock runs.
void MeasureSolver(benchmark::State& state, Solver& solver, const Case& item, int threads,
                   Row& row) {
    const Board board = test::BoardOfFile(item.File);
    SolverOptions options = item.Options;
    options.Threads = threads;
    const ApplyReply reply = solver.ApplySizes({item.NumPos, 8, 300});
    if (!reply.Ok) return state.SkipWithError(std::string(reply.Message).c_str());
    bool warm = !reply.Reallocated;
    for (auto _ : state) {
        for (;; warm = true) {
            SolverHooks hooks;
            Result result = solver.AnalyseBoard(board, options);
            const double begin = Now();
            if (result == Result::Ok) result = solver.Search(hooks);
            const double seconds = Now() - begin;
            if (!warm) continue;
            const SearchCounters& c = solver.Counters();
            Report(state, row, threads,
                   {static_cast<int>(result), c.BucketCnt, c.HashCnt, c.RHashCnt}, seconds);
            break;
        }
    }
}

void MeasureTwin(benchmark::State& state, const Case& item, Row& row) {
    const Board board = test::BoardOfFile(item.File);
    PlainTwin twin(static_cast<std::int32_t>(item.NumPos), 8,
                   static_cast<int>(item.Options.OptLevel), static_cast<int>(item.Options.SeaType),
                   0);
    for (auto _ : state) {
        const double begin = Now();
        const int result = twin.Solve(board);
        Report(state, row, kTwin, {result, twin.BucketCnt, twin.HashCnt, twin.RHashCnt},
               Now() - begin);
    }
}

void PrintTable(const std::vector<Row>& rows, const SpeedWishes& wishes) {
    std::printf("\n%-26s %6s %10s %11s", "level/sides", "result", "positions", "offers");
    for (const int threads : wishes.Threads) std::printf(" | %2d thr s %7s", threads, "Moff/s");
    if (wishes.Threads.size() > 1) std::printf(" | speed-up");
    if (wishes.Twin) std::printf(" | %8s %6s", "twin s", "ratio");
    std::printf("\n");
    std::map<int, double> total;
    for (const Row& row : rows) {
        if (!row.Counts || row.Seconds.empty()) continue;
        const auto seconds = [&row](int threads) {
            const auto at = row.Seconds.find(threads);
            return at == row.Seconds.end() ? 0.0 : at->second;
        };
        std::printf("%-26s %6d %10lld %11lld", row.Name.c_str(), row.Counts->Result,
                    static_cast<long long>(row.Counts->Stored),
                    static_cast<long long>(row.Counts->Offered));
        for (const int threads : wishes.Threads)
            std::printf(" | %8.3f %7.2f", seconds(threads),
                        static_cast<double>(row.Counts->Offered) / seconds(threads) / 1e6);
        const int first = wishes.Threads.front();
        const int last = wishes.Threads.back();
        if (wishes.Threads.size() > 1) std::printf(" | %8.2f", seconds(first) / seconds(last));
        if (seconds(kTwin) > 0)
            std::printf(" | %8.3f %6.1f", seconds(kTwin), seconds(kTwin) / seconds(first));
        std::printf("%s\n", row.Differ ? "  COUNTS DIFFER" : "");
        for (const auto& [threads, spent] : row.Seconds) total[threads] += spent;
    }
    for (const int threads : wishes.Threads) {
        std::printf("all, %d thread%s: %.2f s", threads, threads == 1 ? "" : "s", total[threads]);
        if (total.count(kTwin) > 0)
            std::printf("; plain twin %.2f s, ratio %.1f", total[kTwin],
                        total[kTwin] / total[threads]);
        std::printf("\n");
    }
}

}  // namespace

int RunSpeed(const SpeedWishes& wishes) {
    const std::vector<Case> cases = SpeedCases(wishes.MoreLevels);
    std::vector<Row> rows(cases.size());
    Solver solver;  // one for all searches, so that its memory is touched once
    const auto once = [](benchmark::internal::Benchmark* made) {
        made->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
    };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const Case& item = cases[i];
        Row& row = rows[i];
        row.Name = item.Name();
        for (const int threads : wishes.Threads)
            once(benchmark::RegisterBenchmark(
                (row.Name + "/threads:" + std::to_string(threads)).c_str(),
                [&solver, &item, threads, &row](benchmark::State& state) {
                    MeasureSolver(state, solver, item, threads, row);
                }));
        if (wishes.Twin)
            once(benchmark::RegisterBenchmark(
                (row.Name + "/twin").c_str(),
                [&item, &row](benchmark::State& state) { MeasureTwin(state, item, row); }));
    }
    benchmark::RegisterBenchmark("random_read",
                                 [](benchmark::State& state) {
                                     for (auto _ : state) {
                                         const double each =
                                             RandomReadNs(static_cast<std::size_t>(state.range(0)));
                                         state.SetIterationTime(each * 1e-9);
                                     }
                                 })
        ->UseManualTime()
        ->Iterations(1)
        ->Arg(100 << 20)
        ->Unit(benchmark::kNanosecond);
    benchmark::RunSpecifiedBenchmarks();
    PrintTable(rows, wishes);
    for (const Row& row : rows)
        if (row.Differ) return 1;
    return 0;
}

}  // namespace kavit::bench
