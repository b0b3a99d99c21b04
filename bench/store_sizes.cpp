#include "store_sizes.h"

#include <cstdio>
#include <ctime>
#include <random>
#include <vector>

#include "level/level_reader.h"
#include "solver/solver.h"
#include "solver/store/mixed_table.h"
#include "solver/store/store_size.h"

namespace kavit::bench {

namespace {

// Eight boxes on floor that is open enough for any store to fill before they are home.
constexpr const char* kHall =
    "##############\n"
    "#            #\n"
    "# $ $ # $ $  #\n"
    "#            #\n"
    "# # # #  # # #\n"
    "#     @      #\n"
    "# $ $ # $ $  #\n"
    "#            #\n"
    "# # # #  # # #\n"
    "#  ....      #\n"
    "#  ....      #\n"
    "#            #\n"
    "##############\n";

// Seconds of processor time of this process: what else runs on the machine does not count.
double CpuSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

// Lines that a look takes in a table that holds all its positions: for keys that are there, and for
// keys that are not.
void LinesOfAFullTable() {
    constexpr std::int32_t numPos = 4000000;
    std::vector<MixedTable::Line> lines(MixedTable::LinesFor(numPos));
    const MixedTable table(lines.data(), lines.size());
    std::mt19937_64 random(1);
    const auto look = [&](std::int32_t added) {
        Offer offer;
        offer.Mix = random();
        table.Home(offer, nullptr);
        // Keys as random as these are told apart by the place that they are asked for.
        std::int32_t found = table.Candidate(offer);
        while (found != 0 && (added > 0 || found != -added)) {
            table.Pass(offer);
            found = table.Candidate(offer);
        }
        const double lookedAt = 1 + static_cast<double>(offer.Reprobes);
        if (added > 0) table.Insert(offer, added);
        return lookedAt;
    };
    for (std::int32_t pos = 1; pos <= numPos; ++pos) (void)look(pos);
    double there = 0;
    double missing = 0;
    random.seed(1);
    for (std::int32_t pos = 1; pos <= numPos; ++pos) there += look(-pos);
    for (std::int32_t i = 0; i < numPos; ++i) missing += look(0);
    std::printf(
        "cache lines a look, table %.1f%% full: %.3f for a key that is there, %.3f for one "
        "that is not\n\n",
        100.0 * numPos / static_cast<double>(table.Places()), there / numPos, missing / numPos);
}

}  // namespace

int RunStoreSizes(std::int64_t largest) {
    LinesOfAFullTable();
    Board board;
    if (!ImportLevelText(kHall, board, {}).Loaded()) return 1;
    std::printf("%11s %8s %8s %12s %8s %10s %9s %9s %11s\n", "store", "MB", "result", "offers", "s",
                "positions", "us/stored", "ns/offer", "lines/look");
    double atFour = 0;
    for (const std::int64_t numPos :
         {1000000, 2000000, 4000000, 10000000, 20000000, 50000000, 100000000, 200000000}) {
        if (numPos > largest) break;
        Solver solver;
        const double bytes = static_cast<double>(BytesFor(numPos, 8));
        if (!solver.ApplySizes({numPos, 8, 300}).Ok) {
            std::printf("%11lld %8.0f  more than the machine has left\n",
                        static_cast<long long>(numPos), bytes / 1e6);
            break;
        }
        SolverHooks hooks;
        Result result = solver.AnalyseBoard(board, {.HashCase = HashCase::Mixed, .Threads = 1});
        const double begin = CpuSeconds();
        if (result == Result::Ok) result = solver.Search(hooks);
        const double seconds = CpuSeconds() - begin;
        const SearchCounters& c = solver.Counters();
        const auto offers = static_cast<double>(c.HashCnt);
        const double each = seconds * 1e9 / offers;
        if (numPos == 4000000) atFour = each;
        std::printf("%11lld %8.0f %8d %12lld %8.2f %10lld %9.3f %9.1f %11.3f",
                    static_cast<long long>(numPos), bytes / 1e6, static_cast<int>(result),
                    static_cast<long long>(c.HashCnt), seconds, static_cast<long long>(c.BucketCnt),
                    seconds * 1e6 / static_cast<double>(c.BucketCnt), each,
                    1 + static_cast<double>(c.RHashCnt) / offers);
        if (atFour > 0) std::printf("   %.2f of 4000000", each / atFour);
        std::printf("\n");
        std::fflush(stdout);
    }
    return 0;
}

}  // namespace kavit::bench
