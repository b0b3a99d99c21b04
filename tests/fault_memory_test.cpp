// Memory that runs out while the sizes are applied.

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <limits>

#include "solver/solver.h"
#include "solver/store/memory_source.h"
#include "solver/store/store_size.h"
#include "support/failing_new.h"
#include "support/figures.h"
#include "support/levels.h"

namespace kavit::test {
namespace {

// The machine's memory, of which some allocations fail.
class FailingSource final : public MemorySource {
  public:
    void* Take(std::size_t bytes) override {
        ++Takes;
        return Takes == FailAt || (FailAfter && Takes > FailAt) ? nullptr
                                                                : MachineMemory().Take(bytes);
    }
    void Give(void* memory, std::size_t bytes) override { MachineMemory().Give(memory, bytes); }
    void Clear(void* memory, std::size_t bytes) override { MachineMemory().Clear(memory, bytes); }
    std::uint64_t Available() override { return Room; }
    std::uint64_t Resident() override { return Used; }

    int Takes = 0;
    int FailAt = 0;          // counted from 1; 0 never
    bool FailAfter = false;  // and all that follow
    std::uint64_t Room = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t Used = 0;
};

// What a search counts must not depend on what failed before it.
std::string Solve(Solver& solver) {
    SolverHooks hooks;
    return WholeText(solver, BoardOf("########\n#@$  . #\n# $  . #\n#  #   #\n########"),
                     {.OptLevel = OptLevel::SomethingPlus}, hooks);
}

constexpr Sizes kOld{2000, 2, 300};
constexpr Sizes kNew{300000, 300, 20};  // larger than what the heap hands out
constexpr std::string_view kNoMemory = "Insuficient Memory";

std::string SolveWith(const Sizes& sizes) {
    Solver solver;
    EXPECT_TRUE(solver.ApplySizes(sizes).Ok);
    return Solve(solver);
}

// After an allocation that failed: the old sizes stand and solve, and the new ones can still be
// had.
void CheckRefused(Solver& solver, const ApplyReply& reply) {
    EXPECT_EQ(reply.Message, kNoMemory);
    EXPECT_EQ(solver.AppliedSizes(), kOld);
    EXPECT_EQ(Solve(solver), SolveWith(kOld));
    EXPECT_TRUE(solver.ApplySizes(kNew).Ok);
    EXPECT_EQ(Solve(solver), SolveWith(kNew));
}

TEST(FaultMemory, EveryAllocationOfTheSizes) {
    // The store's, then the small ones around it, as for what is read of the machine.
    for (const bool heap : {false, true}) {
        int failures = 0;
        for (bool failed = true; failed && failures < 999; failures += failed ? 1 : 0) {
            FailingSource source;
            Solver solver = heap ? Solver() : Solver(source);
            ASSERT_TRUE(solver.ApplySizes(kOld).Ok);
            if (!heap) source.FailAt = source.Takes + failures + 1;
            ApplyReply reply;
            {
                const FailingNew failing(heap ? failures + 1 : 0);
                reply = solver.ApplySizes(kNew);
                failed = heap ? failing.Failed() : !reply.Ok;
            }
            SCOPED_TRACE(failures);
            if (!reply.Ok) CheckRefused(solver, reply);
            EXPECT_EQ(Solve(solver), SolveWith(kNew));
        }
        EXPECT_GE(failures, heap ? 3 : 2);
        EXPECT_LT(failures, 999);
    }
}

// Not even the old sizes can be had again: the solver says so, and works when there is memory.
TEST(FaultMemory, EvenTheOldSizesAreGone) {
    FailingSource source;
    Solver solver(source);
    ASSERT_TRUE(solver.ApplySizes(kOld).Ok);
    source.FailAt = source.Takes + 1;
    source.FailAfter = true;
    EXPECT_EQ(solver.ApplySizes(kNew).Message, kNoMemory);
    EXPECT_EQ(solver.AppliedSizes(), Sizes({0, 0, 0}));
    EXPECT_THROW((void)solver.AnalyseBoard(Board(), {}), SolverFault);
    EXPECT_EQ(solver.ApplySizes(kOld).Message, kNoMemory);
    source.FailAfter = false;
    ASSERT_TRUE(solver.ApplySizes(kOld).Ok);
    Solver moved(std::move(solver));
    EXPECT_EQ(Solve(moved), SolveWith(kOld));
    solver = std::move(moved);
    EXPECT_EQ(Solve(solver), SolveWith(kOld));
}

// The pass and the proof need memory of their own; without it the solutions stand.
TEST(FaultMemory, EveryAllocationOfTheOptimizer) {
    const Board level = BoardOfFile(KAVIT_EXAMPLES_FOLDER "/02-corner-shop.xsb");
    Solver solver;
    ASSERT_TRUE(solver.ApplySizes(kOld).Ok);
    SolverHooks hooks;
    int unproved = 0;
    for (int at = 1; at < 1000; ++at) {
        SCOPED_TRACE(at);
        SearchLevel(solver, level, {.OptLevel = OptLevel::SomethingPlus});
        bool failed = false;
        try {
            const FailingNew failing(at);
            EXPECT_EQ(solver.OptimizeMoves(hooks), Result::GoOn);
            failed = failing.Failed();
        } catch (const std::bad_alloc&) {
            failed = true;
        }
        solver.BuildSolutions();
        EXPECT_EQ(KeptFault(solver, level), "");
        EXPECT_EQ(solver.Kept(1)->SolPushes, 13);
        if (!failed) break;
        unproved += solver.Counters().MovesProved ? 0 : 1;
    }
    EXPECT_TRUE(solver.Counters().MovesProved);
    EXPECT_GE(unproved, 5);
}

// The search for the fewest moves likewise; a better solution that it had found by then is kept.
TEST(FaultMemory, EveryAllocationOfTheFewestMoves) {
    const Board level = BoardOfFile(KAVIT_OWN_LEVELS "/fewest_six.xsb");
    Solver solver;
    ASSERT_TRUE(solver.ApplySizes({200000, 8, 300}).Ok);
    SolverHooks hooks;
    int kept = 0;
    for (int at = 1; at < 100000; ++at) {
        SCOPED_TRACE(at);
        SearchLevel(solver, level, {.OptLevel = OptLevel::FewestOfAll});
        solver.BuildSolutions();
        const int known = solver.Kept(0)->SolMoves;
        bool failed = false;
        {
            const FailingNew failing(at);
            const Result result = solver.FewestMoves(hooks);
            failed = failing.Failed();
            EXPECT_EQ(result, failed ? Result::OutOfMemory : Result::GoOn);
        }
        EXPECT_EQ(KeptFault(solver, level), "");
        if (!failed) break;
        kept += solver.Kept(0)->SolMoves < known ? 1 : 0;
    }
    EXPECT_EQ(solver.Kept(0)->SolMoves, 25);
    EXPECT_GE(kept, 1);
}

TEST(FaultMemory, LimitsAnswerAtOnce) {
    constexpr std::uint64_t kGib = std::uint64_t{1} << 30;
    const struct {
        Sizes Fields;
        std::uint64_t Room;
        std::string_view Message;
    } cases[] = {
        {{2147483647, 8, 300}, kGib, kNoMemory},
        {{2147483648, 8, 300}, kGib, kNoMemory},
        {{std::numeric_limits<std::int64_t>::max(), 8, 300}, kGib, kNoMemory},
        {{2147483647, 32767, 300}, std::uint64_t{60000} * kGib, kNoMemory},  // 70 TB
        {{850000000, 32767, 86400}, std::uint64_t{1000} * kGib, kNoMemory},  // 28 TB
        {{4000000, 32768, 300}, std::numeric_limits<std::uint64_t>::max(), kNoMemory},
        {{4000000, 32767, 300}, 64 * kGib, kNoMemory},
        {{10, 32767, 86400}, kGib, ""},
        {{10, 8, 86401}, kGib, "MaxTime can't exceed 86400 secs."},
        {{10, 8, 0}, kGib, "Max elapsed time can't be zero or negative"},
        {{0, 8, 300}, kGib, "Max number of positions can't be zero or negative"},
        {{10, 0, 300}, kGib, "Blocks can't be zero or negative"},
    };
    for (const auto& c : cases) {
        FailingSource source;
        source.Room = c.Room;
        Solver solver(source);
        const ApplyReply reply = solver.ApplySizes(c.Fields);
        EXPECT_EQ(reply.Message, c.Message) << c.Fields.NumPos << " " << c.Fields.Blocks;
        EXPECT_EQ(reply.Reallocated, reply.Ok) << c.Message;
        // At once: nothing was taken that would have to be touched or given back.
        EXPECT_EQ(source.Takes, c.Message.empty() ? 2 : 0) << c.Fields.NumPos;
    }
}

TEST(FaultMemory, ALimitOfTimeAloneTakesNothing) {
    Solver solver;
    ASSERT_TRUE(solver.ApplySizes(kOld).Ok);
    const ApplyReply longer = solver.ApplySizes({kOld.NumPos, kOld.Blocks, 86400});
    EXPECT_TRUE(longer.Ok && !longer.Reallocated);
    EXPECT_FALSE(solver.ApplySizes({kOld.NumPos, kOld.Blocks, 0}).Ok);
    EXPECT_EQ(solver.AppliedSizes().MaxTime, 86400);
}

TEST(FaultMemory, TheLargestSizesAreAskedFor) {
    FailingSource source;
    source.FailAt = 1;
    Solver solver(source);
    EXPECT_FALSE(solver.ApplySizes({2147483647, 32767, 86400}).Ok);
    EXPECT_EQ(source.Takes, 1);
}

// What a store may take: what is free, and what the one in force really uses of its own.
TEST(FaultMemory, MostBytesCountsWhatTheStoreHolds) {
    constexpr std::uint64_t kMib = std::uint64_t{1} << 20;
    const std::uint64_t held = BytesFor(kOld.NumPos, kOld.Blocks);
    const struct {
        std::uint64_t Room, Used, Most;
    } cases[] = {
        {1000 * kMib, 0, 936 * kMib},
        {1000 * kMib, 1000, 936 * kMib + 1000},
        {1000 * kMib, kMib, 936 * kMib + held},  // the rest is not the store's
        {std::numeric_limits<std::uint64_t>::max(), kMib,
         std::numeric_limits<std::uint64_t>::max() - 64 * kMib},
    };
    for (const auto& c : cases) {
        FailingSource source;
        Solver solver(source);
        ASSERT_TRUE(solver.ApplySizes(kOld).Ok);
        source.Room = c.Room;
        source.Used = c.Used;
        EXPECT_EQ(solver.MostBytes(), c.Most);
    }
    FailingSource source;
    source.Room = 500 * kMib;
    Solver solver(source);
    const std::int64_t most = PositionsFor(solver.MostBytes(), 8);
    EXPECT_FALSE(solver.ApplySizes({most + 1, 8, 300}).Ok);
    EXPECT_TRUE(solver.ApplySizes({most, 8, 300}).Ok);
}

// Blocks of the heap and of the kernel: zeroed when taken and when cleared, and given back whole.
TEST(FaultMemory, BlocksOfTheMachine) {
    MemorySource& machine = MachineMemory();
    const auto mappedPages = [] {
        std::int64_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        return pages;
    };
    const auto use = [&machine](int bytes) {
        auto* begin = static_cast<char*>(machine.Take(static_cast<std::size_t>(bytes)));
        ASSERT_EQ(reinterpret_cast<std::uintptr_t>(begin) % 64, 0U);
        EXPECT_EQ(std::count(begin, begin + bytes, 0), bytes);
        std::fill(begin, begin + bytes, 7);
        machine.Clear(begin, static_cast<std::size_t>(bytes));
        EXPECT_EQ(std::count(begin, begin + bytes, 0), bytes);
        machine.Give(begin, static_cast<std::size_t>(bytes));
    };
    for (const int bytes : {1, 64, (1 << 18) - 1}) use(bytes);
    const std::int64_t before = mappedPages();
    for (int round = 0; round < 40; ++round)
        for (const int bytes : {1 << 18, 2 << 20, (2 << 20) + 1}) use(bytes);
    EXPECT_LT(mappedPages() - before, 2000);
}

}  // namespace
}  // namespace kavit::test
