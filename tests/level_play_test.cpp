#include "level/play.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <queue>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "level/paths.h"
#include "level/replay.h"
#include "level/steps.h"
#include "support/levels.h"
#include "support/random_level.h"

namespace kavit {
namespace {

using test::BoardOf;

// The rows of a board, joined by '|'.
std::string Rows(const Board& board) {
    const std::string rows = BoardText(board, "|");
    return rows.substr(0, rows.size() - 1);
}

// Cells 20..25, 39..44 and 58..63.
const char* kRoom = "########\n#  .   #\n#@$ * .#\n#  #   #\n########";
const char* kOpen = "#####\n#@  #\n#   #\n#   #\n#####";
const char* kGoals = "#####\n#+*.#\n#####";

// One word: l d r u keys, w<cell> a walk, p<cell>,<cell> a push, =<letters> a line; z y undo and
// redo, Z Y the same by push, R restart.
bool Do(HandPlay& play, const std::string& word) {
    std::istringstream rest(word.substr(1));
    int from = 0;
    int to = 0;
    char comma = 0;
    const std::map<char, std::function<bool()>> verbs = {
        {'w', [&] { return rest >> to && play.Walk(to); }},
        {'p', [&] { return rest >> from >> comma >> to && play.PushBox(from, to); }},
        {'=', [&] { return play.Play(word.substr(1)); }},
        {'z', [&] { return play.Undo(); }},
        {'y', [&] { return play.Redo(); }},
        {'Z', [&] { return play.UndoPush(); }},
        {'Y', [&] { return play.RedoPush(); }},
        {'R', [&] { return play.Restart(); }},
    };
    const auto verb = verbs.find(word[0]);
    return verb != verbs.end() ? verb->second() : play.Step(DirectionOf(word[0]));
}

struct Script {
    const char* Level;
    const char* Words;  // '!' behind a word that must change nothing
    const char* Played;
    std::int64_t Pushes;
    bool Solved;
    const char* Rows;  // "" where the letters say enough
};

TEST(HandPlay, PlaysAndTakesBack) {
    const std::vector<Script> scripts = {
        {kRoom, "l! r r! d", "Rd", 1, false, "########|#  .   #|#  $* .#|# @#   #|########"},
        {kRoom, "r u r d!", "Rur", 1, false, "########|#  +   #|#  $* .#|#  #   #|########"},
        {kRoom, "r u r d! z z z z!", "", 0, false, "########|#  .   #|#@$ * .#|#  #   #|########"},
        {kRoom, "r u z z y", "R", 1, false, ""},
        {kRoom, "r u z z y y y!", "Ru", 1, false, ""},
        {kRoom, "r u z z r y y!", "Ru", 1, false, ""},  // the same step keeps what was undone
        {kRoom, "r u z z d y!", "d", 0, false, ""},     // another one takes its place
        {kRoom, "w23", "urrr", 0, false, "########|#  .@  #|# $ * .#|#  #   #|########"},
        {kRoom, "w0! w40! w42! w39! w-1! w323!", "", 0, false, ""},
        {kRoom, "w23 z z!", "", 0, false, ""},
        {kRoom, "w23 z u r z y y y!", "urrr", 0, false, ""},
        {kRoom, "w23 z u z y", "u", 0, false, ""},
        {kRoom, "w23 z d z y y!", "d", 0, false, ""},
        {kRoom, "w21 w23 z", "ur", 0, false, ""},
        {kRoom, "w21 w23 z z y y", "urrr", 0, false, ""},
        {kOpen, "w40", "dr", 0, false, ""},
        {kOpen, "w60", "ddrr", 0, false, ""},
        {kOpen, "w60 w20", "ddrrlluu", 0, false, ""},
        {kOpen, "w58 w22", "ddrruu", 0, false, ""},
        {kRoom, "p42,44", "urrdRR", 2, false, "########|#  .   #|# $ .@*#|#  #   #|########"},
        {kRoom, "p42,44 Z", "urrdR", 1, false, ""},
        {kRoom, "p42,44 Z Z Z!", "", 0, false, ""},
        {kRoom, "p42,44 z Y", "urrdR", 1, false, ""},
        {kRoom, "p42,44 z Y Y Y!", "urrdRR", 2, false, ""},
        {kRoom, "p42,44 l l Z", "urrdRR", 2, false, ""},            // behind the push
        {kRoom, "p42,44 l l u Z Y Y!", "urrdRRllu", 2, false, ""},  // the end is a stop as well
        {kRoom, "p42,44 z y", "urrdRR", 2, false, ""},
        {kRoom, "p42,60! p42,40! p42,42! p39,41! p41,43! p-1,43! p42,400!", "", 0, false, ""},
        {kRoom, "r u R y y R R!", "", 0, false, ""},
        {kRoom, "=RuX! =Rx! =! =Ru z", "", 0, false, ""},
        {kRoom, "=Ru =lz! =l", "Rul", 1, false, ""},
        {test::kEasy, "r r r r!", "rRR", 2, true, "#######|#   @*#|#######"},
        {test::kEasy, "r r r z", "rR", 1, false, ""},
        {kGoals, "r r!", "R", 1, true, "#####|#.+*#|#####"},
        {kGoals, "r z", "", 0, true, "#####|#+*.#|#####"},
        {kOpen, "r", "r", 0, false, ""},
        {"####\n#$.#\n####", "l! r! w22! p20,21! =r! z! y! R!", "", 0, false, ""},
        {"#####\n#@ @#\n#####", "l! r! w21! =r! Z! Y!", "", 0, false, ""},
    };
    for (const Script& script : scripts) {
        SCOPED_TRACE(std::string(script.Level) + "\n" + script.Words);
        HandPlay play(BoardOf(script.Level));
        std::istringstream words(script.Words);
        for (std::string word; words >> word;) {
            const bool changes = word.back() != '!';
            if (!changes) word.pop_back();
            EXPECT_EQ(Do(play, word), changes) << word;
        }
        EXPECT_EQ(play.Played(), script.Played);
        EXPECT_EQ(play.Moves(), static_cast<std::int64_t>(play.Played().size()));
        EXPECT_EQ(play.Pushes(), script.Pushes);
        EXPECT_EQ(play.Solved(), script.Solved);
        if (script.Rows[0] != '\0') {
            EXPECT_EQ(Rows(play.Position()), script.Rows);
        }
    }
}

TEST(HandPlay, TheEdgeIsAWallAndOtherMenAreFloor) {
    Board board;
    board.Cell[0] = kMan;
    board.Cell[1] = 7;
    board.Cell[2] = kBox;
    board.ManPos = 200;  // out of date, as after a shift
    HandPlay play(board);
    EXPECT_FALSE(play.Step(0));
    EXPECT_FALSE(play.Step(3));
    for (int i = 0; i < 30; ++i) play.Step(2);
    EXPECT_EQ(play.Played(), "r" + std::string(16, 'R'));
    EXPECT_EQ(play.Position().Cell[1], kFloor);
    EXPECT_FALSE(play.Walk(18));
    EXPECT_TRUE(play.Walk(kCells - 1));
    EXPECT_FALSE(play.Step(1));
    EXPECT_FALSE(play.Step(2));
    EXPECT_FALSE(play.Walk(1) && play.PushBox(18, 19));  // the row below is not the next column
}

// One word: f b a move, F B to the next and the last push, 0 $ the ends, s<k> a place.
bool Go(ReplayCursor& cursor, const std::string& word) {
    const std::map<char, bool (ReplayCursor::*)()> verbs = {
        {'f', &ReplayCursor::Forward},  {'F', &ReplayCursor::ForwardPush},
        {'B', &ReplayCursor::BackPush}, {'0', &ReplayCursor::First},
        {'$', &ReplayCursor::Last},
    };
    if (word[0] == 'b') return cursor.Seek(cursor.At() - 1);
    if (word[0] == 's') return cursor.Seek(std::stoll(word.substr(1)));
    return (cursor.*verbs.at(word[0]))();
}

TEST(ReplayCursor, OnePositionInALine) {
    const char* level = "#######\n#@$  .#\n# $   #\n# .   #\n#######";
    const struct {
        const char* Lurd;
        std::int64_t Pushes;
        std::int64_t Playable;
        const char* Words;  // '!' behind a word that must change nothing
        std::int64_t At;
        std::int64_t PushesAt;
        int Facing;
    } cases[] = {
        {"RRlDur", 3, 6, "b! 0! B!", 0, 0, -1},
        {"RRlDur", 3, 6, "f f f", 3, 2, 0},
        {"RRlDur", 3, 6, "f f f b", 2, 2, 2},
        {"RRlDur", 3, 6, "F F F", 4, 3, 1},
        {"RRlDur", 3, 6, "F F F F F! f!", 6, 3, 2},
        {"RRlDur", 3, 6, "$ B", 4, 3, 1},
        {"RRlDur", 3, 6, "$ B B", 2, 2, 2},
        {"RRlDur", 3, 6, "$ B B B", 1, 1, 2},
        {"RRlDur", 3, 6, "$ $! s6! s3", 3, 2, 0},
        {"RRlDur", 3, 6, "s99 s-5", 0, 0, -1},
        {"RRlDur", 3, 6, "s5 s1 s4", 4, 3, 1},
        {"RRlxDD", 4, 3, "$ f! F!", 3, 2, 0},  // no move letter
        {"RRldDD", 4, 3, "$", 3, 2, 0},        // a push written as a walk
        {"RRRRRR", 6, 3, "F F F F!", 3, 3, 2},
        {"", 0, 0, "f! F! $!", 0, 0, -1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.Lurd) + ": " + c.Words);
        ReplayCursor cursor(BoardOf(level), c.Lurd);
        EXPECT_EQ(cursor.Pushes(), c.Pushes);
        std::istringstream words(c.Words);
        for (std::string word; words >> word;) {
            const bool changes = word.back() != '!';
            EXPECT_EQ(Go(cursor, word), changes) << word;
        }
        EXPECT_EQ(cursor.At(), c.At);
        EXPECT_EQ(cursor.PushesAt(), c.PushesAt);
        EXPECT_EQ(cursor.Facing(), c.Facing);
        // However it came there, the position is that of the moves before it.
        ReplayCursor direct(BoardOf(level), std::string(c.Lurd, static_cast<std::size_t>(c.At)));
        direct.Last();
        EXPECT_EQ(cursor.Position(), direct.Position());
        EXPECT_EQ(cursor.AtEnd(), c.At == c.Playable);
    }
    ReplayCursor broken(BoardOf(level), "RRlxDD");
    broken.Last();
    EXPECT_TRUE(broken.Step(0));  // what can't be played gives way
    EXPECT_EQ(broken.Line(), "RRll");
    EXPECT_EQ(broken.PushMarks(), (std::vector<std::int64_t>{1, 2}));
}

// The least cost of a box's way by a plain search over the squares of man and box.
std::map<int, std::pair<int, int>> PlainCosts(const Board& start, int box) {
    using Entry = std::tuple<int, int, int, int>;  // pushes, moves, box, man
    std::priority_queue<Entry, std::vector<Entry>, std::greater<>> open;
    std::vector<bool> done(static_cast<std::size_t>(kCells * kCells));
    std::map<int, std::pair<int, int>> costs;
    open.emplace(0, 0, box, TheMan(start));
    Board empty = start;
    empty.Cell[static_cast<std::size_t>(box)] = kFloor;
    while (!open.empty()) {
        const auto [pushes, moves, at, man] = open.top();
        open.pop();
        const auto place = static_cast<std::size_t>(at * kCells + man);
        if (done[place]) continue;
        done[place] = true;
        costs.try_emplace(at, pushes, moves);
        for (int direction = 0; direction < 4; ++direction) {
            const int to = NextCell(man, direction);
            if (!FreeCell(empty, to)) continue;
            if (to != at) {
                open.emplace(pushes, moves + 1, at, to);
            } else if (FreeCell(empty, NextCell(to, direction))) {
                open.emplace(pushes + 1, moves + 1, NextCell(to, direction), to);
            }
        }
    }
    return costs;
}

TEST(BoxPaths, FewestPushesThenFewestMoves) {
    int pushed = 0;
    for (std::uint64_t seed = 1; seed <= 12; ++seed) {
        const Board board = test::RandomLevel(seed);
        if (TheMan(board) < 0) continue;
        for (int box = 0; box < kCells; ++box) {
            const BoxPaths paths(board, box);
            if (!HoldsBox(CodeAt(board, box))) {
                EXPECT_TRUE(paths.Cells().empty());
                continue;
            }
            auto costs = PlainCosts(board, box);
            EXPECT_EQ(paths.Cells().size() + 1, costs.size());
            for (const int cell : paths.Cells()) {
                SCOPED_TRACE(std::to_string(seed) + ": " + std::to_string(box) + " to " +
                             std::to_string(cell));
                const std::string way = paths.To(cell).value_or("none");
                const ReplayOutcome outcome = Replay(board, way);
                EXPECT_EQ(outcome.What, "");
                EXPECT_EQ(
                    std::pair(static_cast<int>(outcome.Pushes), static_cast<int>(outcome.Moves)),
                    costs[cell]);
                HandPlay play(board);
                EXPECT_TRUE(play.PushBox(box, cell));
                EXPECT_TRUE(HoldsBox(CodeAt(play.Position(), cell)));
                ++pushed;
            }
        }
    }
    EXPECT_GT(pushed, 200);
}

}  // namespace
}  // namespace kavit
