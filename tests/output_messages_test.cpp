#include <gtest/gtest.h>

#include <map>

#include "output/messages.h"

namespace kavit {
namespace {

using Lines = std::pair<const char*, const char*>;  // a null pointer: the line stays

std::string Show(const std::optional<std::string>& line) {
    return line ? '"' + *line + '"' : "unchanged";
}
std::string Show(const char* line) {
    return Show(line != nullptr ? std::optional<std::string>(line) : std::nullopt);
}

MessageValues Values() {
    MessageValues v;
    v.Blocks = 8;
    v.SeaSteps = 96;
    v.AnimPushes = 3;
    v.AnimMoves = 12;
    v.SolMoves = {230, 244};
    v.SolPushes = {99, 97};
    v.nSol = 41;
    v.ForwLevel = 7;
    v.BackLevel = 5;
    return v;
}

TEST(Messages, WholeCatalogue) {
    const std::map<int, Lines> texts = {
        {0, {"", ""}},
        {1, {"This program is limited to  8 boxes", ""}},
        {2, {"Strange mapping ???", ""}},
        {3, {"There is no solution !", nullptr}},
        {4, {"Out of memory before a solution", nullptr}},
        {5, {"Solver is now thinking very hard...", "Analyzed up to  96 pushes"}},
        {6, {"Pushes:  3/99", "Moves:  12/230"}},
        {8, {"Interrupted by user !", "Analyzed up to 96 pushes"}},
        {9, {"Problem already solved", ""}},
        {10, {"You can now build your board, or import it", ""}},
        {11, {"You can now edit your board", ""}},
        {12, {"You can select and copy to the clipboard (CTRL-C)", ""}},
        {13, {"You can paste a board (xsb format) from the clipboard (CTRL-V)", ""}},
        {14, {"There is, at least, one frozen block", ""}},
        {25, {"Improving moves from ", "Reviewing up to 7 + 5 pushes"}},
        {26, {"Analyzing beyond optimal push solution", "Reviewing up to 7 + 5 pushes"}},
        {28, {"Best solution  230/99   244/97", "on  41 analyzed so far"}},
        {29, {"Best solution   230/99   244/97", "on  41 analyzed"}},
        {30, {"Solution:  230/99   244/97", "on  41 analyzed"}},
        {44, {"Out of memory but there is a solution", " 230/99    244/97"}},
        {77, {"You can edit or import your board (File Menu)", "or read it from a file (.xsb)"}},
        {78, {"Editing", "When ready click 'DONE'"}},
        {79, {"You can edit this board (Menu File)", ""}},
        {88, {"Interrupted by user but there is a solution", " 230/99    244/97"}},
        {91, {"Solution found in 97 pushes", ""}},
        {101, {"Nothing to Open", ""}},
        {102, {"Input line too long", ""}},
        {103, {"Too much lines in file", ""}},
        {104, {"Width puzzle exceed the maximum (19)", ""}},
        {105, {"Height puzzle exceed the maximum (17)", ""}},
        {106, {"can't open file, try again", ""}},
        {150, {nullptr, "solution remained in Clipboard and 'TEXT'"}},
    };
    for (int number = -2; number < 160; ++number) {
        MessageCatalogue catalogue;
        const MessageLines lines = catalogue.ShowMsg(number, Values());
        const std::string unknown =
            "Unknown message " + std::string(number < 0 ? "" : " ") + std::to_string(number);
        const auto row = texts.find(number);
        const Lines expected = row != texts.end() ? row->second : Lines{unknown.c_str(), ""};
        EXPECT_EQ(Show(lines.Left), Show(expected.first)) << number;
        EXPECT_EQ(Show(lines.Right), Show(expected.second)) << number;
    }
}

TEST(Messages, TimeOutHasItsOwnWords) {
    MessageCatalogue catalogue;
    MessageValues v = Values();
    v.TimeOut = true;
    EXPECT_EQ(catalogue.ShowMsg(Result::Stopped, v).Left, "Time Out");
    EXPECT_EQ(catalogue.ShowMsg(Result::StoppedWithSolution, v).Left,
              "Time Out but there is a solution");
}

TEST(Messages, EqualMovesShowOnePair) {
    MessageCatalogue catalogue;
    MessageValues v = Values();
    v.SolMoves[1] = v.SolMoves[0];  // the pushes still differ
    EXPECT_EQ(catalogue.ShowMsg(29, v).Left, "Best solution   230/99");
    EXPECT_EQ(catalogue.ShowMsg(88, v).Right, " 230/99");
}

TEST(Messages, ImprovingShowsTheTextOfTheLastBest) {
    MessageCatalogue catalogue;
    MessageValues v = Values();
    (void)catalogue.ShowMsg(28, v);
    v.SolMoves = {100, 100};
    EXPECT_EQ(catalogue.ShowMsg(25, v).Left, "Improving moves from  230/99   244/97");
    (void)catalogue.ShowMsg(28, v);
    EXPECT_EQ(catalogue.ShowMsg(25, v).Left, "Improving moves from  100/99");
}

}  // namespace
}  // namespace kavit
