#include "output/messages.h"

#include <cstddef>

#include "output/number_text.h"

namespace kavit {

namespace {

// One row of the catalogue whose texts hold no values. A null pointer leaves the line as it is.
struct FixedText {
    int Number;
    const char* Left;
    const char* Right;
};

constexpr FixedText kFixedTexts[] = {
    {0, "", ""},
    {2, "Strange mapping ???", ""},
    {3, "There is no solution !", nullptr},
    {4, "Out of memory before a solution", nullptr},
    {9, "Problem already solved", ""},
    {10, "You can now build your board, or import it", ""},
    {11, "You can now edit your board", ""},
    {12, "You can select and copy to the clipboard (CTRL-C)", ""},
    {13, "You can paste a board (xsb format) from the clipboard (CTRL-V)", ""},
    {14, "There is, at least, one frozen block", ""},
    {77, "You can edit or import your board (File Menu)", "or read it from a file (.xsb)"},
    {78, "Editing", "When ready click 'DONE'"},
    {79, "You can edit this board (Menu File)", ""},
    {101, "Nothing to Open", ""},
    {102, "Input line too long", ""},
    {103, "Too much lines in file", ""},
    {104, "Width puzzle exceed the maximum (19)", ""},
    {105, "Height puzzle exceed the maximum (17)", ""},
    {106, "can't open file, try again", ""},
    {150, nullptr, "solution remained in Clipboard and 'TEXT'"},
};

std::optional<std::string> Line(const char* text) {
    if (text == nullptr) return std::nullopt;
    return text;
}

std::string Ratio(std::int64_t done, std::int64_t all) {
    return S(done) + "/" + B(all);
}

// The depth that the optimizer has reached on each side.
std::string Reviewing(const MessageValues& v) {
    return "Reviewing up to" + S(v.ForwLevel) + " +" + S(v.BackLevel) + " pushes";
}

// "moves/pushes" of solution 0 and, when solution 1 differs in moves, `separator` and its own pair.
// Two solutions of equal moves show as one, whatever their pushes.
std::string PairText(const MessageValues& values, std::string_view separator) {
    std::string text = Ratio(values.SolMoves[0], values.SolPushes[0]);
    if (values.SolMoves[0] != values.SolMoves[1]) {
        text += separator;
        text += Ratio(values.SolMoves[1], values.SolPushes[1]);
    }
    return text;
}

}  // namespace

MessageLines MessageCatalogue::ShowMsg(int number, const MessageValues& v) {
    const char* const ended = v.TimeOut ? "Time Out" : "Interrupted by user";
    switch (number) {
        case 1:
            return {"This program is limited to " + S(v.Blocks) + " boxes", ""};
        case 5:
            return {"Solver is now thinking very hard...",
                    "Analyzed up to " + S(v.SeaSteps) + " pushes"};
        case 6:
            return {"Pushes: " + Ratio(v.AnimPushes, v.SolPushes[0]),
                    "Moves: " + Ratio(v.AnimMoves, v.SolMoves[0])};
        case 8:
            return {std::string(ended) + (v.TimeOut ? "" : " !"),
                    "Analyzed up to" + S(v.SeaSteps) + " pushes"};
        case 25:
            return {"Improving moves from " + bestSolText_, Reviewing(v)};
        case 26:
            return {"Analyzing beyond optimal push solution", Reviewing(v)};
        case 28:
            bestSolText_ = PairText(v, "  ");
            return {"Best solution " + bestSolText_, "on " + S(v.nSol) + " analyzed so far"};
        case 29:
            return {"Best solution  " + PairText(v, "  "), "on " + S(v.nSol) + " analyzed"};
        case 30:
            return {"Solution: " + PairText(v, "  "), "on " + S(v.nSol) + " analyzed"};
        case 44:
            return {"Out of memory but there is a solution", PairText(v, "   ")};
        case 88:
            return {std::string(ended) + " but there is a solution", PairText(v, "   ")};
        case 91:
            return {"Solution found in" + S(v.SeaSteps + 1) + " pushes", ""};
        default:
            break;
    }
    for (const FixedText& row : kFixedTexts) {
        if (row.Number == number) return {Line(row.Left), Line(row.Right)};
    }
    return {"Unknown message " + S(number), ""};
}

}  // namespace kavit
