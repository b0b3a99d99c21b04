#include <gtest/gtest.h>

#include <cmath>
#include <ctime>

#include "output/watch.h"

namespace kavit {
namespace {

TEST(Watch, CaptionsAcrossMidnight) {
    SolverHooks hooks;
    SolveWatch watch;
    EXPECT_EQ(watch.Start(86398.5, 600), "0/600");
    EXPECT_EQ(watch.Tick(86399.0, hooks), "0/600");  // 0.5: halves to even
    EXPECT_EQ(watch.Tick(0.0, hooks), "2/600");      // 1.5
    EXPECT_EQ(watch.Tick(10.25, hooks), "12/600");
    EXPECT_EQ(watch.Tick(10.25, hooks), "12/600");
    watch.Finish(10.75);
    EXPECT_DOUBLE_EQ(watch.LastTick() - watch.SeaStart(), 12.25);
    EXPECT_FALSE(hooks.Stopping());
}

TEST(Watch, ASolveThatEndsBeforeTheFirstTick) {
    SolveWatch watch;
    watch.Start(86399.75, 600);
    watch.Finish(0.5);
    EXPECT_DOUBLE_EQ(watch.LastTick() - watch.SeaStart(), 0.75);
}

TEST(Watch, TheLimitStopsTheSolve) {
    for (const double seconds : {299.0, 299.5, 300.0}) {
        SolverHooks hooks;
        SolveWatch watch;
        watch.Start(1000, 300);
        watch.Tick(1000 + seconds, hooks);
        EXPECT_EQ(hooks.StopSea == StopCause::Time, seconds > 299) << seconds;
    }
    // The largest limit is a whole day, after which the clock shows what it showed at the start.
    SolverHooks hooks;
    SolveWatch watch;
    watch.Start(1000.25, 86400);
    EXPECT_EQ(watch.Tick(50000, hooks), "49000/86400");
    EXPECT_EQ(watch.Tick(999.5, hooks), "86399/86400");
    EXPECT_FALSE(hooks.Stopping());
    EXPECT_EQ(watch.Tick(1000.5, hooks), "86400/86400");
    EXPECT_TRUE(hooks.Stopping());
}

TEST(Watch, EveryTenthTickAsksForARefresh) {
    SolverHooks hooks;
    SolveWatch watch;
    watch.Start(0, 600);
    std::string due;
    for (int tick = 1; tick <= 25; ++tick) {
        watch.Tick(tick, hooks);
        if (hooks.RefreshDue.exchange(false)) due += std::to_string(tick) + " ";
    }
    EXPECT_EQ(due, "10 20 ");
}

TEST(Watch, TimeOfDayRunsForward) {
    const DayClock clock;
    double last = clock.Now();
    const std::time_t today = std::time(nullptr);
    const std::tm& local = *std::localtime(&today);
    const double seen = local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec;
    EXPECT_LT(std::fmod(seen - last + kSecondsPerDay + 2, kSecondsPerDay), 4);
    for (int i = 0; i < 1000; ++i) {
        const double now = clock.Now();
        ASSERT_GE(now, 0);
        ASSERT_LT(now, kSecondsPerDay);
        // At midnight, and only there, it falls back.
        ASSERT_TRUE(now >= last || now < 1);
        last = now;
    }
}

}  // namespace
}  // namespace kavit
