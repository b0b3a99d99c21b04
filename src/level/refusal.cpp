#include "level/refusal.h"

#include <algorithm>
#include <bitset>
#include <tuple>

#include "level/steps.h"

namespace kavit {

namespace {

using Cells = std::bitset<kCells>;

int RowOf(int cell) {
    return cell / Maxcol;
}
int ColOf(int cell) {
    return cell % Maxcol;
}
bool OnEdge(int cell) {
    return RowOf(cell) == 0 || RowOf(cell) == Maxrow - 1 || ColOf(cell) == 0 ||
           ColOf(cell) == Maxcol - 1;
}

bool Has(const Cells& cells, int cell) {
    return cells[static_cast<std::size_t>(cell)];
}

// What stands where.
struct Squares {
    Cells Walls;
    Cells Boxes;
    Cells Goals;
    Cells Men;

    explicit Squares(const Board& board) {
        for (std::size_t c = 0; c < kCells; ++c) {
            const std::uint8_t code = board.Cell[c];
            Walls[c] = code == kWall;
            Boxes[c] = HoldsBox(code);
            Goals[c] = OnGoal(code);
            Men[c] = HoldsMan(code);
        }
    }
};

std::vector<int> ListOf(const Cells& cells) {
    std::vector<int> list;
    for (int c = 0; c < kCells; ++c) {
        if (Has(cells, c)) list.push_back(c);
    }
    return list;
}

std::string Counted(std::size_t count, const std::string& one, const std::string& several) {
    return std::to_string(count) + " " + (count == 1 ? one : several);
}

// "row 2, column 5" of a cell.
std::string CellPlaceText(int cell) {
    return "row " + std::to_string(RowOf(cell) + 1) + ", column " + std::to_string(ColOf(cell) + 1);
}

// "row 1, column 2 and row 3, column 4"
std::string PlacesText(const std::vector<int>& cells) {
    std::string text;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (i > 0) text += i + 1 == cells.size() ? " and " : "; ";
        text += CellPlaceText(cells[i]);
    }
    return text;
}

// Dead ends without man, box or goal become wall, as the solver has it before it looks for a way
// out: a gap at the end of a row can get closed by what stands at the beginning of the next.
Cells FillDeadEnds(const Squares& squares, int man) {
    Cells walls = squares.Walls;
    const std::vector<int> built = ListOf(walls);
    if (built.empty()) return walls;
    const int from = std::max(built.front(), Maxcol + 1);
    const int to = std::min(built.back(), kCells - Maxcol - 2);
    const Cells kept = squares.Boxes | squares.Goals;
    for (bool changed = true; changed;) {
        changed = false;
        for (int c = from; c <= to; ++c) {
            if (Has(walls, c) || Has(kept, c) || c == man) continue;
            const auto around = std::count_if(Dir.begin(), Dir.end(),
                                              [&](int step) { return Has(walls, c + step); });
            if (around <= 2) continue;
            walls.set(static_cast<std::size_t>(c));
            changed = true;
        }
    }
    return walls;
}

// The man's room, boxes left aside, as far as it was looked at, and a shortest way from the man to
// the edge of the grid; no way when the room is enclosed.
struct Room {
    Cells Seen;
    std::vector<int> WayOut;

    Room(const Cells& walls, int man) {
        std::array<int, kCells> from{};
        std::vector<int> queue = {man};
        Seen[static_cast<std::size_t>(man)] = true;
        for (std::size_t next = 0; next < queue.size(); ++next) {
            const int c = queue[next];
            if (OnEdge(c)) {
                for (int back = c; back != man; back = from[static_cast<std::size_t>(back)])
                    WayOut.push_back(back);
                WayOut.push_back(man);
                std::reverse(WayOut.begin(), WayOut.end());
                return;
            }
            for (const int step : Dir) {
                const int n = c + step;
                if (Has(walls, n) || Has(Seen, n)) continue;
                Seen.set(static_cast<std::size_t>(n));
                from[static_cast<std::size_t>(n)] = c;
                queue.push_back(n);
            }
        }
    }
};

// The square to wall up. Where one square alone lets the man out it lies on every way, and of
// several such squares the last one leaves him the most room. A wider gap has none: then it is
// where the way comes to the outermost row or column of the walls. Beyond those nothing is a gap.
int OpenAt(const Squares& squares, const Cells& walls, const std::vector<int>& wayOut) {
    int firstRow = Maxrow;
    int firstCol = Maxcol;
    int lastRow = 0;
    int lastCol = 0;
    for (const int c : ListOf(squares.Walls)) {
        firstRow = std::min(firstRow, RowOf(c));
        firstCol = std::min(firstCol, ColOf(c));
        lastRow = std::max(lastRow, RowOf(c));
        lastCol = std::max(lastCol, ColOf(c));
    }
    const auto within = [&](int c, int inset) {
        return RowOf(c) >= firstRow + inset && RowOf(c) <= lastRow - inset &&
               ColOf(c) >= firstCol + inset && ColOf(c) <= lastCol - inset;
    };
    const int man = wayOut.front();
    for (auto c = wayOut.rbegin(); *c != man; ++c) {
        if (!within(*c, 0)) continue;
        Cells mended = walls;
        mended[static_cast<std::size_t>(*c)] = true;
        if (Room(mended, man).WayOut.empty()) return *c;
    }
    return *std::find_if(wayOut.begin(), wayOut.end(),
                         [&](int c) { return OnEdge(c) || !within(c, 1); });
}

void JudgeRoom(const Squares& squares, int man, std::vector<Refusal>& refusals) {
    const Cells walls = FillDeadEnds(squares, man);
    const Room room(walls, man);
    if (!room.WayOut.empty()) {
        const int gap = OpenAt(squares, walls, room.WayOut);
        refusals.push_back({RefusalKind::WallOpen, "wall open at " + CellPlaceText(gap), {gap}});
        return;
    }
    const std::tuple<Cells, std::string, std::string> kinds[] = {{squares.Boxes, "box", "boxes"},
                                                                 {squares.Goals, "goal", "goals"}};
    for (const auto& [cells, name, plural] : kinds) {
        const std::vector<int> lost = ListOf(cells & ~(squares.Boxes & squares.Goals) & ~room.Seen);
        if (lost.empty()) continue;
        refusals.push_back(
            {RefusalKind::OutOfReach,
             Counted(lost.size(), name, plural) + " out of the man's reach: " + PlacesText(lost),
             lost});
    }
}

}  // namespace

std::vector<Refusal> WhyRefused(const Board& board) {
    const Squares squares(board);
    if ((squares.Walls | squares.Boxes | squares.Goals | squares.Men).none()) {
        return {{RefusalKind::NothingButFloor, "nothing but floor", {}}};
    }
    std::vector<Refusal> refusals;
    const std::vector<int> men = ListOf(squares.Men);
    const std::size_t boxes = squares.Boxes.count();
    const std::size_t goals = squares.Goals.count();
    if (men.empty()) refusals.push_back({RefusalKind::NoMan, "no man", {}});
    if (men.size() > 1) {
        refusals.push_back({RefusalKind::SeveralMen,
                            std::to_string(men.size()) + " men: " + PlacesText(men), men});
    }
    if (boxes == 0) {
        refusals.push_back({RefusalKind::NoBox, "no box", {}});
    } else if (boxes != goals) {
        refusals.push_back(
            {RefusalKind::BoxesAndGoals,
             Counted(boxes, "box", "boxes") + " and " + Counted(goals, "goal", "goals"),
             {}});
    } else if (men.size() == 1 && squares.Boxes == squares.Goals) {
        return {{RefusalKind::SolvedAlready, "solved already: every box stands on a goal", {}}};
    }
    if (men.size() == 1) JudgeRoom(squares, men.front(), refusals);
    return refusals;
}

}  // namespace kavit
