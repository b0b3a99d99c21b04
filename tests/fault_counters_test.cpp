// Counters at the end of their fields: a sentence, never a wrap.

#include <gtest/gtest.h>

#include "solver/search/meeting.h"
#include "solver/search/store_pos.h"
#include "solver/store/primes.h"
#include "support/levels.h"

namespace kavit::test {
namespace {

struct Standing final : ManWalks {
    int Walk(const std::uint8_t*, std::uint8_t, std::uint8_t) override { return 0; }
    void SpreadCosts(const std::uint8_t*, const std::vector<ManCost>&,
                     std::vector<ManCost>&) override {}
};

// 32767 moves are kept, one more is a fault: of one position, and of a meeting.
TEST(FaultCounters, MovesOfSixteenBits) {
    SearchState state(MachineMemory());
    ASSERT_TRUE(state.Store.Resize(100, 8));
    state.Store.Clear(1, HashCase::Default);
    SolverHooks hooks;
    state.Hooks = &hooks;
    state.OptLevel = state.Options.OptLevel = OptLevel::Something;
    state.Counters.SeaPhase = 1;
    Standing walk;
    const auto offer = [&](std::uint8_t box, std::uint8_t side, std::int32_t parent, int moves) {
        const std::uint8_t key[16] = {box, 21};
        Offer made;
        made.Mix = 0x9E3779B9U * box;
        made.Moves = moves;
        const SlotTable& table = state.Store.Slots();
        table.Home(made, key);
        return StorePos(state, table, made, key, parent, side, walk);
    };
    EXPECT_EQ(offer(30, kForwTag, -1, 0), Result::GoOn);     // position 1, the start
    EXPECT_EQ(offer(31, kForwTag, 1, 32767), Result::GoOn);  // position 2
    EXPECT_EQ(state.Store.Record(2).Moves, 32767);
    EXPECT_THROW((void)offer(32, kForwTag, 1, 32768), SolverFault);
    EXPECT_EQ(state.Counters.BucketCnt, 2);
    // Met from the other side: 32767 and 1 do not fit together.
    EXPECT_THROW((void)offer(31, kBackTag, 1, 1), SolverFault);
    EXPECT_FALSE(state.Kept[0] || state.Kept[1]);
}

// What callers of the library may get wrong.
TEST(FaultCounters, ArgumentsThatDoNotHold) {
    Solver solver;
    ASSERT_TRUE(solver.ApplySizes({100, 8, 300}).Ok);
    EXPECT_THROW((void)solver.AnalyseBoard(BoardOf(kEasy), {.SeaType = static_cast<SeaType>(3)}),
                 SolverFault);
    EXPECT_THROW((void)solver.AnalyseBoard(BoardOf(kEasy), {.HashCase = static_cast<HashCase>(4)}),
                 SolverFault);
    EXPECT_THROW((void)PrimeTable().NextPrime(PrimeTable::kLargest + 1), SolverFault);
}

}  // namespace
}  // namespace kavit::test
