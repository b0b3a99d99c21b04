// Any number of threads counts, keeps and stores the same, and leaves nothing behind.

#include <gtest/gtest.h>

#include <filesystem>
#include <thread>
#include <utility>
#include <vector>

#include "support/figures.h"
#include "support/levels.h"

namespace kavit::test {
namespace {

Board Example(const char* name) {
    return BoardOfFile(KAVIT_EXAMPLES_FOLDER "/" + std::string(name) + ".xsb");
}

std::int64_t ThreadsHere() {
    const auto tasks = std::filesystem::directory_iterator("/proc/self/task");
    return std::distance(begin(tasks), end(tasks));
}

// Looks now and then how many threads there are: a look at a folder for each position would take
// all the time.
class Watch final : public StopAt {
  public:
    explicit Watch(std::int64_t yield = 0, bool fault = false, std::int64_t every = 1024)
        : StopAt(yield, fault), every_(every) {}
    void Yield() override {
        if (Yields % every_ == every_ - 1) Most = std::max(Most, ThreadsHere());
        StopAt::Yield();
    }
    std::int64_t Most = 0;

  private:
    std::int64_t every_;
};

TEST(Threads, CountAndStoreTheSame) {
    std::thread([] {}).join();  // a sanitizer has a thread of its own from the first one on
    const std::int64_t before = ThreadsHere();
    Solver solver;
    ASSERT_TRUE(solver.ApplySizes({60000, 8, 300}).Ok);
    const struct {
        const char* Level;
        SolverOptions Options;
        std::int64_t EndAt = 0;
        bool Fault = false;
    } rows[] = {
        {"06-long-way", {}},
        {"06-long-way", {.OptLevel = OptLevel::SomethingPlus, .HashCase = HashCase::Mixed}},
        {"05-crossing", {.OptLevel = OptLevel::SomethingPlus, .OptSpecial = true}},
        {"05-crossing", {.OptLevel = OptLevel::SomethingMore, .SeaType = SeaType::Backward}},
        {"05-crossing", {.OptLevel = OptLevel::None, .SeaType = SeaType::Forward}},
        {"07-masterpiece", {.HashCase = HashCase::Case2}},  // out of memory
        {"07-masterpiece", {}, 20000},
        {"07-masterpiece", {}, 20001, true},
    };
    for (const auto& row : rows) {
        std::string one;
        std::int64_t most = 0;
        for (const int threads : {1, 2, 3}) {
            SCOPED_TRACE(std::to_string(&row - rows) + ", threads " + std::to_string(threads));
            SolverOptions options = row.Options;
            options.Threads = threads;
            Watch hooks(row.EndAt, row.Fault);
            const std::string whole = WholeText(solver, Example(row.Level), options, hooks) +
                                      std::to_string(hooks.Yields);
            if (threads == 1) one = whole;
            EXPECT_TRUE(whole == one) << whole.substr(0, whole.find('\n'));
            EXPECT_EQ(ThreadsHere(), before);
            EXPECT_EQ(solver.Counters().Threads, threads);
            EXPECT_GE(hooks.Most, most);
            most = hooks.Most;
            EXPECT_LE(most, before + threads - 1);
        }
        EXPECT_EQ(most, before + 2) << row.Level;  // they were at work
    }
}

TEST(Threads, CountTheSameForTheFewestMovesOfAll) {
    std::thread([] {}).join();
    const std::int64_t before = ThreadsHere();
    Solver solver;
    ASSERT_TRUE(solver.ApplySizes({60000, 8, 300}).Ok);
    const std::vector<std::pair<int, std::vector<int>>> runs = {{0, {1, 2, 8}}, {20000, {1, 3}}};
    for (const auto& [endAt, counts] : runs) {
        std::string one;
        for (const int threads : counts) {
            SolverHooks none;
            (void)WholeText(solver, Example("05-crossing"),
                            {.OptLevel = OptLevel::FewestOfAll, .Threads = threads}, none);
            Watch hooks(endAt);
            (void)solver.FewestMoves(hooks);
            const std::string text = KeptText(solver) + std::to_string(hooks.Yields);
            if (threads == 1) one = text;
            EXPECT_EQ(text, one) << threads;
            EXPECT_EQ(hooks.Most, before + threads - 1);
        }
    }
}

TEST(Threads, SmallLevelsStartNone) {
    Solver solver;
    ASSERT_TRUE(solver.ApplySizes({1000, 8, 300}).Ok);
    const std::int64_t before = ThreadsHere();
    Watch hooks(0, false, 1);
    ASSERT_EQ(solver.AnalyseBoard(BoardOf(kEasy), {.Threads = 8}), Result::Ok);
    ASSERT_EQ(solver.Search(hooks), Result::Ok);
    EXPECT_EQ(hooks.Most, before);
}

TEST(Threads, TwoSolversAtOnceCountTheSame) {
    const SolverOptions options{.OptLevel = OptLevel::SomethingPlus, .Threads = 2};
    std::array<std::string, 3> wholes;
    const auto solve = [&](std::size_t i) {
        Solver solver;
        EXPECT_TRUE(solver.ApplySizes({60000, 8, 300}).Ok);
        SolverHooks hooks;
        wholes.at(i) = WholeText(solver, Example("06-long-way"), options, hooks);
    };
    solve(0);
    std::thread other(solve, 1);
    solve(2);
    other.join();
    EXPECT_TRUE(wholes[1] == wholes[0] && wholes[2] == wholes[0]);
}

}  // namespace
}  // namespace kavit::test
