// Any number of threads counts, keeps and stores the same, and leaves nothing behind.

#include <gtest/gtest.h>

#include <filesystem>
#include <thread>

#include "solver/solver.h"
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

// Ends a solve at a yield, by a stop or by a fault.
class EndAt final : public SolverHooks {
  public:
    EndAt(std::int64_t yield, bool fault) : at_(yield), fault_(fault) {}
    void Yield() override {
        most_ = std::max(most_, ThreadsHere_());
        if (++yields_ != at_) return;
        if (fault_) throw SolverFault("ended by the test");
        RequestStop(StopCause::User);
    }
    [[nodiscard]] std::int64_t Yields() const { return yields_; }
    [[nodiscard]] std::int64_t MostThreads() const { return most_; }

  private:
    // Asked now and then: a look at a folder for each position would take all the time.
    [[nodiscard]] std::int64_t ThreadsHere_() const {
        return yields_ % 1024 == 1023 ? ThreadsHere() : 0;
    }
    std::int64_t at_;
    bool fault_;
    std::int64_t yields_ = 0;
    std::int64_t most_ = 0;
};

class Digest {
  public:
    void Add(std::int64_t value) {
        value_ = (value_ ^ static_cast<std::uint64_t>(value)) * 0x100000001b3U;
    }
    void Add(const std::string& text) {
        for (const char c : text) Add(c);
    }
    [[nodiscard]] std::uint64_t Value() const { return value_; }

  private:
    std::uint64_t value_ = 0xcbf29ce484222325U;
};

// A whole solve, or what a stop or a fault leaves of it, to the last stored position.
std::uint64_t Whole(Solver& solver, const Board& board, const SolverOptions& options,
                    EndAt& hooks) {
    Digest digest;
    try {
        Result result = solver.AnalyseBoard(board, options);
        if (result == Result::Ok) result = solver.Search(hooks);
        digest.Add(static_cast<int>(result));
        if (result == Result::Ok) digest.Add(static_cast<int>(solver.OptimizeMoves(hooks)));
        if (solver.Kept(0)) {
            solver.BuildSolutions();
            for (const int k : {0, 1}) digest.Add(solver.Kept(k)->SolString);
        }
    } catch (const SolverFault& fault) {
        digest.Add(fault.what());
    }
    const SearchCounters& c = solver.Counters();
    for (const std::int64_t count :
         {c.BucketCnt, c.PosChanged, c.PosDiscarded, c.nSol, c.nSolSearch, c.HashCnt, c.RHashCnt,
          c.SeaSteps, c.ForwDepth, c.BackDepth, std::int64_t{c.MovesProved}, hooks.Yields()})
        digest.Add(count);
    for (std::int64_t pos = 1; pos <= c.BucketCnt; ++pos) {
        const StoredPosition position = solver.Position(pos);
        digest.Add(position.Tag);
        digest.Add(position.Parent);
        digest.Add(position.Moves);
        digest.Add(position.Man);
        digest.Add(position.NormalisedMan);
        for (const int box : position.Boxes) digest.Add(box);
    }
    return digest.Value();
}

TEST(Threads, CountAndStoreTheSame) {
    std::thread([] {}).join();  // a sanitizer has a thread of its own from the first one on
    const std::int64_t before = ThreadsHere();
    Solver solver;
    ASSERT_TRUE(solver.ApplySizes({60000, 8, 300}).Ok);
    const struct {
        const char* Level;
        SolverOptions Options;
        std::int64_t EndAt;
        bool Fault;
    } rows[] = {
        {"06-long-way", {}, 0, false},
        {"06-long-way",
         {.OptLevel = OptLevel::SomethingPlus, .HashCase = HashCase::Mixed},
         0,
         false},
        {"05-crossing", {.OptLevel = OptLevel::SomethingPlus, .OptSpecial = true}, 0, false},
        {"05-crossing",
         {.OptLevel = OptLevel::SomethingMore, .SeaType = SeaType::Backward},
         0,
         false},
        {"05-crossing", {.OptLevel = OptLevel::None, .SeaType = SeaType::Forward}, 0, false},
        {"07-masterpiece", {.HashCase = HashCase::Case2}, 0, false},  // out of memory
        {"07-masterpiece", {}, 20000, false},
        {"07-masterpiece", {}, 20001, true},
    };
    for (const auto& row : rows) {
        std::uint64_t one = 0;
        std::int64_t most = 0;
        for (const int threads : {1, 2, 3}) {
            SCOPED_TRACE(std::to_string(&row - rows) + ", threads " + std::to_string(threads));
            SolverOptions options = row.Options;
            options.Threads = threads;
            EndAt hooks(row.EndAt, row.Fault);
            const std::uint64_t whole = Whole(solver, Example(row.Level), options, hooks);
            if (threads == 1) one = whole;
            EXPECT_EQ(whole, one);
            EXPECT_EQ(ThreadsHere(), before);
            EXPECT_EQ(solver.Counters().Threads, threads);
            EXPECT_GE(hooks.MostThreads(), most);
            most = hooks.MostThreads();
            EXPECT_LE(most, before + threads - 1);
        }
        EXPECT_EQ(most, before + 2) << row.Level;  // they were at work
    }
}

TEST(Threads, SmallLevelsStartNone) {
    Solver solver;
    ASSERT_TRUE(solver.ApplySizes({1000, 8, 300}).Ok);
    const std::int64_t before = ThreadsHere();
    struct Watch final : SolverHooks {
        void Yield() override { Most = std::max(Most, ThreadsHere()); }
        std::int64_t Most = 0;
    } hooks;
    ASSERT_EQ(solver.AnalyseBoard(BoardOf(kEasy), {.Threads = 8}), Result::Ok);
    ASSERT_EQ(solver.Search(hooks), Result::Ok);
    EXPECT_EQ(hooks.Most, before);
}

TEST(Threads, TwoSolversAtOnceCountTheSame) {
    const SolverOptions options{.OptLevel = OptLevel::SomethingPlus, .Threads = 2};
    std::array<std::uint64_t, 3> digests{};
    const auto solve = [&](std::size_t i) {
        Solver solver;
        EXPECT_TRUE(solver.ApplySizes({60000, 8, 300}).Ok);
        EndAt hooks(0, false);
        digests[i] = Whole(solver, Example("06-long-way"), options, hooks);
    };
    solve(0);
    std::thread other(solve, 1);
    solve(2);
    other.join();
    EXPECT_EQ(digests[1], digests[0]);
    EXPECT_EQ(digests[2], digests[0]);
}

}  // namespace
}  // namespace kavit::test
