#include "support/random_level.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "support/levels.h"

namespace kavit::test {

int Random::Pick(int low, int high) {
    const auto span = static_cast<std::uint64_t>(high - low + 1);
    return low + static_cast<int>(engine_() % span);
}

namespace {

// A rectangle of cells; may lie partly beyond the board.
struct Rect {
    int Row = 0;
    int Col = 0;
    int Rows = 0;
    int Cols = 0;
};

class LevelMaker {
  public:
    LevelMaker(std::uint64_t seed, int scale) : random_(seed), scale_(scale) {}

    Board Make() {
        boxes_ = random_.Pick(1, 5);
        BuildRoom();
        if (random_.Percent(25)) AddCloset();
        if (random_.Percent(70)) {
            PlaceAndPull();
        } else {
            PlaceAtRandom();
        }
        Disturb();
        SetExtent(board_);
        return board_;
    }

  private:
    std::uint8_t& Cell(int row, int col) {
        return board_.Cell[static_cast<std::size_t>(row * Maxcol + col)];
    }
    std::uint8_t& Cell(int cell) { return board_.Cell[static_cast<std::size_t>(cell)]; }
    [[nodiscard]] static bool OnBoard(int row, int col) {
        return row >= 0 && row < Maxrow && col >= 0 && col < Maxcol;
    }

    // Walls around a rectangle of floor, as far as they lie on the board.
    void Enclose(const Rect& in) {
        for (int row = in.Row - 1; row <= in.Row + in.Rows; ++row) {
            for (int col = in.Col - 1; col <= in.Col + in.Cols; ++col) {
                if (!OnBoard(row, col)) continue;
                const bool inside = row >= in.Row && row < in.Row + in.Rows && col >= in.Col &&
                                    col < in.Col + in.Cols;
                Cell(row, col) = inside ? kFloor : kWall;
            }
        }
    }

    // The man's room: the more boxes, the smaller, so that the positions stay few.
    void BuildRoom() {
        constexpr int kRoomCells[] = {255, 60, 32, 22, 18};
        const int limit = std::min(kRoomCells[boxes_ - 1] * scale_, 255);
        const int least = random_.Percent(20) ? boxes_ * 2 + 3 : limit * 2 / 3;
        Rect room;
        do {
            room.Rows = random_.Pick(2, 15);
            room.Cols = random_.Pick(2, 17);
        } while (room.Rows * room.Cols > limit || room.Rows * room.Cols < least ||
                 (least > limit / 4 && std::min(room.Rows, room.Cols) < 3));
        const int place = random_.Pick(0, 99);
        if (place < 40) {  // top left, as a level file is read
            room.Row = room.Col = 1;
        } else if (place < 65) {
            room.Row = random_.Pick(1, Maxrow - 1 - room.Rows);
            room.Col = random_.Pick(1, Maxcol - 1 - room.Cols);
        } else if (place < 90) {  // at the bottom, where cells do not fit a byte
            room.Row = Maxrow - 1 - room.Rows;
            room.Col = random_.Pick(1, Maxcol - 1 - room.Cols);
        } else {  // anywhere, over an edge of the board too
            room.Row = random_.Pick(0, Maxrow - room.Rows);
            room.Col = random_.Pick(0, Maxcol - room.Cols);
        }
        Enclose(room);
        const int density = random_.Pick(0, boxes_ < 3 ? 5 : 3) * 5;
        for (int row = room.Row; row < room.Row + room.Rows; ++row) {
            for (int col = room.Col; col < room.Col + room.Cols; ++col) {
                if (random_.Percent(density)) Cell(row, col) = kWall;
                if (Cell(row, col) == kFloor) floor_.push_back(row * Maxcol + col);
            }
        }
        if (random_.Percent(6)) {  // a gap in the outer wall, perhaps
            Cell(std::clamp(room.Row - 1 + random_.Pick(0, 1) * (room.Rows + 1), 0, Maxrow - 1),
                 room.Col + random_.Pick(0, room.Cols - 1)) = kFloor;
        }
    }

    // A second region beside the room, where the man never comes: boxes on goals, mostly.
    void AddCloset() {
        for (int i = random_.Pick(1, 2); i > 0; --i) {
            const int cell = random_.Pick(0, kCells - 1);
            if (Cell(cell) != kFloor || NearFloor(cell)) continue;
            const int kind = random_.Pick(0, 19);
            Cell(cell) = kind < 16 ? kBoxOnGoal : kind < 18 ? kBox : kGoal;
            const Rect around{cell / Maxcol, cell % Maxcol, 1, 1};
            if (!random_.Percent(60)) continue;
            const std::uint8_t kept = Cell(cell);
            Enclose(around);
            Cell(cell) = kept;
        }
    }
    // A wall of the closet must not fall into the room.
    [[nodiscard]] bool NearFloor(int cell) const {
        return std::any_of(floor_.begin(), floor_.end(), [cell](int f) {
            return std::abs(f / Maxcol - cell / Maxcol) <= 1 &&
                   std::abs(f % Maxcol - cell % Maxcol) <= 1;
        });
    }

    int TakeFloor() {
        const auto index =
            static_cast<std::size_t>(random_.Pick(0, static_cast<int>(floor_.size()) - 1));
        return floor_[index];
    }
    void Put(std::uint8_t what, int count) {
        for (int tries = 0; count > 0 && tries < 100 && !floor_.empty(); ++tries) {
            const int cell = TakeFloor();
            const std::uint8_t under = Cell(cell);
            if (under == kFloor)
                Cell(cell) = what;
            else if (what == kGoal && under == kBox && random_.Percent(30))
                Cell(cell) = kBoxOnGoal;
            else if (what == kMan && under == kGoal)
                Cell(cell) = kManOnGoal;
            else
                continue;
            if (what == kMan) man_ = cell;
            --count;
        }
    }

    void PlaceAtRandom() {
        Put(kBox, boxes_);
        Put(kGoal, boxes_);
        Put(kMan, 1);
    }

    // Boxes on goals, then pulls at random: the man goes anywhere he can and drags a box one step.
    void PlaceAndPull() {
        Put(kBoxOnGoal, boxes_);
        Put(kMan, 1);
        if (man_ < 0) return;
        int box = TakeFloor();
        for (int tries = random_.Pick(20, 1500); tries > 0; --tries) {
            if (!IsBox(box) || random_.Percent(20)) box = TakeFloor();
            const int dir = Dir[static_cast<std::size_t>(random_.Pick(0, 3))];
            if (!IsBox(box) || !IsFree(box + dir) || !IsFree(box + 2 * dir)) continue;
            if (!Reaches(box + dir)) continue;
            Leave(man_);
            Leave(box);
            Cell(box + dir) = Cell(box + dir) == kGoal ? kBoxOnGoal : kBox;
            box += dir;
            man_ = box + dir;
            Cell(man_) = Cell(man_) == kGoal ? kManOnGoal : kMan;
        }
    }
    void Leave(int cell) {
        Cell(cell) = Cell(cell) == kManOnGoal || Cell(cell) == kBoxOnGoal ? kGoal : kFloor;
    }
    // Whether the man can walk to a cell.
    [[nodiscard]] bool Reaches(int cell) {
        std::vector<int> open{man_};
        for (std::size_t i = 0; i < open.size(); ++i) {
            if (open[i] == cell) return true;
            for (const int dir : Dir) {
                const int next = open[i] + dir;
                if (IsFree(next) && std::find(open.begin(), open.end(), next) == open.end()) {
                    open.push_back(next);
                }
            }
        }
        return false;
    }
    [[nodiscard]] bool InRoom(int cell) const {
        return std::find(floor_.begin(), floor_.end(), cell) != floor_.end();
    }
    [[nodiscard]] bool IsFree(int cell) {
        return InRoom(cell) && (Cell(cell) == kFloor || Cell(cell) == kGoal || cell == man_);
    }
    [[nodiscard]] bool IsBox(int cell) {
        return InRoom(cell) && (Cell(cell) == kBox || Cell(cell) == kBoxOnGoal);
    }

    // Sometimes the counts are wrong, or a code stands there that no reader makes.
    void Disturb() {
        if (random_.Percent(3)) Put(kGoal, 1);
        if (random_.Percent(2)) Put(kBox, 1);
        if (random_.Percent(2)) Put(kMan, 1);
        if (random_.Percent(2)) std::replace(board_.Cell.begin(), board_.Cell.end(), kMan, kFloor);
        if (random_.Percent(2))
            std::replace(board_.Cell.begin(), board_.Cell.end(), kBox, kBoxOnGoal);
        if (random_.Percent(2))
            Cell(random_.Pick(0, kCells - 1)) = static_cast<std::uint8_t>(random_.Pick(0, 9));
    }

    Random random_;
    int scale_;
    Board board_;
    std::vector<int> floor_;  // the free cells of the man's room
    int boxes_ = 0;
    int man_ = -1;
};

}  // namespace

Board RandomLevel(std::uint64_t seed, int scale) {
    return LevelMaker(seed, scale).Make();
}

}  // namespace kavit::test
