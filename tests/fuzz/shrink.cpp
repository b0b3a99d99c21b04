#include "fuzz/shrink.h"

#include <array>
#include <utility>
#include <vector>

#include "support/levels.h"

namespace kavit::test {

namespace {

constexpr int kPlainBlocks = 8;
constexpr std::int32_t kPlainStore = 50000;

std::uint8_t& At(Board& board, int row, int col) {
    return board.Cell[static_cast<std::size_t>(row * Maxcol + col)];
}

// The board without a row; what lies below moves up.
Board WithoutRow(Board board, int row) {
    for (; row < Maxrow; ++row)
        for (int col = 0; col < Maxcol; ++col)
            At(board, row, col) = row + 1 < Maxrow ? At(board, row + 1, col) : kFloor;
    return board;
}

Board WithoutColumn(Board board, int col) {
    for (; col < Maxcol; ++col)
        for (int row = 0; row < Maxrow; ++row)
            At(board, row, col) = col + 1 < Maxcol ? At(board, row, col + 1) : kFloor;
    return board;
}

// How far the man could walk if there were no boxes.
int Room(const Board& board) {
    std::vector<int> open;
    std::array<bool, kCells> seen{};
    for (int c = 0; c < kCells; ++c) {
        const std::uint8_t code = board.Cell[static_cast<std::size_t>(c)];
        if (code != kMan && code != kManOnGoal) continue;
        open.push_back(c);
        seen[static_cast<std::size_t>(c)] = true;
    }
    for (std::size_t i = 0; i < open.size(); ++i) {
        for (const int step : Dir) {
            const int n = open[i] + step;
            if (n < 0 || n >= kCells || seen[static_cast<std::size_t>(n)]) continue;
            if (board.Cell[static_cast<std::size_t>(n)] == kWall) continue;
            seen[static_cast<std::size_t>(n)] = true;
            open.push_back(n);
        }
    }
    return static_cast<int>(open.size());
}

// What there is to understand in a case. Only cheaper cases are taken, so the shrinking ends.
std::int64_t Cost(const FuzzCase& fuzzCase) {
    std::int64_t cost = 0;
    for (const FuzzSolve& solve : fuzzCase.Solves) {
        const Question& ask = solve.Ask;
        cost += 1000000 + 20 * Room(ask.Level) + 30 * ask.OptLevel;
        for (const std::uint8_t code : ask.Level.Cell) {
            if (code == kWall) cost += 1;
            if (code == kBox || code == kGoal || code == kManOnGoal) cost += 10;
            if (code == kBoxOnGoal || code > kManOnGoal) cost += 15;
            if (code > kMan && code < kManOnGoal) cost += 5;
        }
        for (const bool odd :
             {solve.StopPassAfter != 0, ask.StopAfter != 0, ask.OptSpecial, ask.SeaType != 0,
              ask.HashCase != 0, ask.Blocks != kPlainBlocks, ask.NumPos != kPlainStore})
            cost += odd ? 10 : 0;
    }
    return cost;
}

class Shrinker {
  public:
    Shrinker(FuzzCase fuzzCase, const std::function<bool(const FuzzCase&)>& fails, int most)
        : best_(std::move(fuzzCase)), fails_(fails), left_(most) {}

    FuzzCase Run() {
        do {
            smaller_ = false;
            DropSolves();
            for (std::size_t i = 0; i < best_.Solves.size(); ++i) {
                PlainSettings(i);
                SmallerLevel(i);
            }
        } while (smaller_ && left_ > 0);
        return best_;
    }

  private:
    void Try(const FuzzCase& candidate) {
        if (Cost(candidate) >= Cost(best_) || left_-- <= 0 || !fails_(candidate)) return;
        best_ = candidate;
        smaller_ = true;
    }

    void DropSolves() {
        for (std::size_t i = best_.Solves.size(); best_.Solves.size() > 1 && i-- > 0;) {
            FuzzCase candidate = best_;
            candidate.Solves.erase(candidate.Solves.begin() + static_cast<std::ptrdiff_t>(i));
            Try(candidate);
        }
    }

    template <typename Change>
    void TryChange(std::size_t i, Change change) {
        FuzzCase candidate = best_;
        change(candidate.Solves[i]);
        Try(candidate);
    }

    void PlainSettings(std::size_t i) {
        TryChange(i, [](FuzzSolve& s) { s.StopPassAfter = 0; });
        TryChange(i, [](FuzzSolve& s) { s.Ask.StopAfter = 0; });
        TryChange(i, [](FuzzSolve& s) { s.Ask.OptSpecial = false; });
        TryChange(i, [](FuzzSolve& s) { s.Ask.SeaType = 0; });
        TryChange(i, [](FuzzSolve& s) { s.Ask.HashCase = 0; });
        TryChange(i, [](FuzzSolve& s) { s.Ask.Blocks = kPlainBlocks; });
        TryChange(i, [](FuzzSolve& s) { s.Ask.NumPos = kPlainStore; });
        for (const int level : {0, 1, 2})
            TryChange(i, [=](FuzzSolve& s) { s.Ask.OptLevel = level; });
    }

    void TryLevel(std::size_t i, Board level) {
        SetExtent(level);
        TryChange(i, [&level](FuzzSolve& s) { s.Ask.Level = level; });
    }
    void TryCell(std::size_t i, std::size_t cell, std::uint8_t code) {
        Board level = Level(i);
        level.Cell[cell] = code;
        TryLevel(i, level);
    }
    [[nodiscard]] const Board& Level(std::size_t i) const { return best_.Solves[i].Ask.Level; }

    void SmallerLevel(std::size_t i) {
        for (int row = Maxrow; row-- > 0;) TryLevel(i, WithoutRow(Level(i), row));
        for (int col = Maxcol; col-- > 0;) TryLevel(i, WithoutColumn(Level(i), col));
        DropBoxes(i);
        for (std::size_t c = 0; c < kCells; ++c)
            if (Level(i).Cell[c] != kWall && Level(i).Cell[c] != kMan) TryCell(i, c, kWall);
        for (std::size_t c = 0; c < kCells; ++c)
            if (Level(i).Cell[c] != kFloor && Level(i).Cell[c] != kMan) TryCell(i, c, kFloor);
    }

    // A box and a goal go together, or the counts would not fit.
    void DropBoxes(std::size_t i) {
        for (std::size_t b = 0; b < kCells; ++b) {
            for (std::size_t g = 0; g < kCells; ++g) {
                const std::uint8_t goal = Level(i).Cell[g];
                if (Level(i).Cell[b] != kBox || (goal != kGoal && goal != kManOnGoal)) continue;
                Board level = Level(i);
                level.Cell[b] = kFloor;
                level.Cell[g] = goal == kGoal ? kFloor : kMan;
                TryLevel(i, level);
            }
        }
    }

    FuzzCase best_;
    const std::function<bool(const FuzzCase&)>& fails_;
    int left_;
    bool smaller_ = false;
};

}  // namespace

FuzzCase Shrink(FuzzCase fuzzCase, const std::function<bool(const FuzzCase&)>& fails, int most) {
    return Shrinker(std::move(fuzzCase), fails, most).Run();
}

}  // namespace kavit::test
