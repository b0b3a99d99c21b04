#include "level/replay.h"

#include <array>

#include "level/shown_text.h"

namespace kavit {

namespace {

struct Place {
    int Row = 0;
    int Col = 0;
};

struct Letter {
    int RowStep = 0;
    int ColStep = 0;
    bool Push = false;
    bool Known = false;
};

Letter LetterOf(char c) {
    switch (c) {
        case 'l':
            return {0, -1, false, true};
        case 'd':
            return {1, 0, false, true};
        case 'r':
            return {0, 1, false, true};
        case 'u':
            return {-1, 0, false, true};
        case 'L':
            return {0, -1, true, true};
        case 'D':
            return {1, 0, true, true};
        case 'R':
            return {0, 1, true, true};
        case 'U':
            return {-1, 0, true, true};
        default:
            return {};
    }
}

// Rows and columns from 1, with a ring of wall around the board, so that its edge is just a wall.
class Room {
  public:
    explicit Room(const Board& board) {
        for (auto& row : wall_) row.fill(true);
        for (int index = 0; index < kCells; ++index) {
            const std::uint8_t code = board.Cell[static_cast<std::size_t>(index)];
            const Place p{index / Maxcol + 1, index % Maxcol + 1};
            At(wall_, p) = code == kWall;
            At(box_, p) = code == kBox || code == kBoxOnGoal;
            At(goal_, p) = code == kGoal || code == kBoxOnGoal || code == kManOnGoal;
            if (code == kMan || code == kManOnGoal) {
                man_ = p;
                ++men_;
            }
        }
    }

    [[nodiscard]] int Men() const { return men_; }

    // Plays one letter; answers why it can't be played, or nullptr.
    const char* Play(const Letter& letter) {
        const Place to{man_.Row + letter.RowStep, man_.Col + letter.ColStep};
        if (At(wall_, to)) return "the man would walk into a wall";
        if (At(box_, to) != letter.Push) {
            return letter.Push ? "there is no box to push" : "a box is in the way of a step";
        }
        if (letter.Push) {
            const Place beyond{to.Row + letter.RowStep, to.Col + letter.ColStep};
            if (At(wall_, beyond)) return "the box would be pushed into a wall";
            if (At(box_, beyond)) return "the box would be pushed into another box";
            At(box_, to) = false;
            At(box_, beyond) = true;
        }
        man_ = to;
        return nullptr;
    }

    [[nodiscard]] bool Solved() const {
        for (std::size_t row = 0; row < box_.size(); ++row) {
            for (std::size_t col = 0; col < box_[row].size(); ++col) {
                if (box_[row][col] && !goal_[row][col]) return false;
            }
        }
        return true;
    }

  private:
    using Grid = std::array<std::array<bool, Maxcol + 2>, Maxrow + 2>;
    static bool& At(Grid& grid, Place p) {
        const auto row = static_cast<std::size_t>(p.Row);
        const auto col = static_cast<std::size_t>(p.Col);
        return grid[row][col];
    }

    Grid wall_{};
    Grid box_{};
    Grid goal_{};
    Place man_;
    int men_ = 0;
};

std::string UnknownLetter(char c) {
    const auto byte = static_cast<unsigned char>(c);
    const bool plain = byte > 0x20 && byte < 0x7F;
    return "'" + (plain ? std::string(1, c) : ByteNumber(c)) + "' is no move letter";
}

}  // namespace

ReplayOutcome Replay(const Board& board, std::string_view lurd) {
    ReplayOutcome outcome;
    Room room(board);
    if (room.Men() != 1) {
        outcome.What = room.Men() == 0 ? "there is no man" : "there is more than one man";
        return outcome;
    }
    for (std::size_t i = 0; i < lurd.size(); ++i) {
        const Letter letter = LetterOf(lurd[i]);
        const char* fault = letter.Known ? room.Play(letter) : nullptr;
        if (!letter.Known || fault != nullptr) {
            outcome.FailedAt = i;
            outcome.What = letter.Known ? fault : UnknownLetter(lurd[i]);
            return outcome;
        }
        ++outcome.Moves;
        if (letter.Push) ++outcome.Pushes;
    }
    outcome.Solved = room.Solved();
    return outcome;
}

}  // namespace kavit
