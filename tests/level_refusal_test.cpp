#include "level/refusal.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "solver/solver.h"
#include "support/levels.h"
#include "support/random_level.h"

namespace kavit::test {
namespace {

using std::string;

string Why(const Board& board) {
    string why;
    for (const Refusal& refusal : WhyRefused(board)) why += refusal.Text + "|";
    return why;
}

TEST(Refusal, NamesTheReason) {
    // A room of the board's whole width, and one that fills the board: nothing but "#" and blanks.
    const string wide(Maxcol, '#');
    string large = wide + "\n";
    for (int row = 2; row < Maxrow; ++row) large += "#" + string(Maxcol - 2, ' ') + "#\n";
    const auto put = [](string text, std::size_t at, const string& what) {
        return text.replace(at, what.size(), what);
    };
    const string room = put(large + wide, 22, "@$.");
    const struct {
        string Level;
        string Why;
    } cases[] = {
        {"####\n#  #\n####", "no man|no box|"},
        {"######\n#@$.@#\n######", "2 men: row 2, column 2 and row 2, column 5|"},
        {"######\n#@+@*#\n######",
         "3 men: row 2, column 2; row 2, column 3 and row 2, column 4|1 box and 2 goals|"},
        {"######\n#@  .#\n######", "no box|"},
        {"######\n#@$$.#\n######", "2 boxes and 1 goal|"},
        {"######\n#+ $.#\n######", "1 box and 2 goals|"},
        {"####\n#@*#\n####", "solved already: every box stands on a goal|"},
        {"####\n @* \n####", "solved already: every box stands on a goal|"},
        {"#####\n#@$.#\n#####", ""},
        // The one square that lets him out, in each of the four walls; and not the corridor to it.
        {"### ##\n#    #\n#@$. #\n######", "wall open at row 1, column 4|"},
        {"######\n#    #\n  @$.#\n######", "wall open at row 3, column 1|"},
        {"######\n#    #\n#@$.  \n######", "wall open at row 3, column 6|"},
        {"######\n#    #\n#@$. #\n### ##", "wall open at row 4, column 4|"},
        {"#######\n#@$.  #\n##### #\n##### #\n##### #", "wall open at row 5, column 6|"},
        // A gap of two squares: where the shortest way meets the outermost row.
        {"###  ##\n#     #\n#@$.  #\n#######", "wall open at row 1, column 4|"},
        {"######\n#    #\n#@$.  \n#     \n######", "wall open at row 3, column 6|"},
        {"######\n#    #\n#@$. #\n#    #\n##  ##", "wall open at row 5, column 3|"},
        // Beyond the last column there is no wall, and no gap in it.
        {wide.substr(1) + "\n#@$." + string(14, ' ') + "\n" + wide.substr(1),
         "wall open at row 2, column 18|"},
        {room, ""},
        // One square at the edge is a dead end: beside it lies the wall of the next row.
        {put(room, 180, " "), ""},
        {put(room, 198, " "), ""},
        {put(put(room, 180, " "), 200, " "), "wall open at row 10, column 1|"},
        {"#########\n#@$.#  $#\n####### #\n#.$##. ##\n#########",
         "2 boxes out of the man's reach: row 2, column 8 and row 4, column 3|"
         "2 goals out of the man's reach: row 4, column 2 and row 4, column 6|"},
        {"#####\n#+#$#\n#####", "1 box out of the man's reach: row 2, column 4|"},
        {"########\n#@*#$#.#\n########",
         "1 box out of the man's reach: row 2, column 5|"
         "1 goal out of the man's reach: row 2, column 7|"},
    };
    for (const auto& c : cases) EXPECT_EQ(Why(BoardOf(c.Level)), c.Why) << c.Level;
    EXPECT_EQ(Why(Board{}), "nothing but floor|");
}

// The solver's verdict on boards of every kind, and a reason of the same kind.
TEST(Refusal, AgreesWithTheSolver) {
    Solver solver;
    ASSERT_TRUE(solver.ApplySizes({100, 16, 300}).Ok);
    std::set<RefusalKind> seen;
    for (std::uint64_t seed = 1; seed <= 4000; ++seed) {
        const Board board = RandomLevel(seed);
        const Result result = solver.AnalyseBoard(board, {});
        bool refused = false;
        bool solved = false;
        for (const Refusal& refusal : WhyRefused(board)) {
            seen.insert(refusal.Kind);
            solved = solved || refusal.Kind == RefusalKind::SolvedAlready;
            refused = refused || refusal.Kind < RefusalKind::OutOfReach;
        }
        EXPECT_EQ(refused && !solved, result == Result::StrangeMapping)
            << seed << BoardText(board, "\n");
        EXPECT_EQ(solved, result == Result::AlreadySolved) << seed;
    }
    EXPECT_EQ(seen.size(), 6U);  // all but a bare board and one without boxes
}

}  // namespace
}  // namespace kavit::test
