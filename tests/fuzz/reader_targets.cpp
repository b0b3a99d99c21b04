#include "fuzz/reader_targets.h"

#include <algorithm>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>

#include "app/model/settings_file.h"
#include "level/collection.h"
#include "level/level_reader.h"
#include "solver/solver.h"
#include "support/levels.h"

namespace kavit::test {

namespace {

void Require(bool holds, const char* what) {
    if (!holds) throw std::logic_error(what);
}

// No control character but the tab, the ones above ASCII included.
bool Printable(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte < ' ' && byte != '\t') || byte == 0x7F) return false;
        if (byte == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0)
            return false;
    }
    return true;
}

// Bytes that come a few at a time, as from a pipe.
class Pieces : public std::streambuf {
  public:
    explicit Pieces(std::string_view bytes) : bytes_(bytes) {}

  protected:
    int_type underflow() override {
        const std::size_t count = std::min<std::size_t>(bytes_.size(), size_++ % 3 + 1);
        if (count == 0) return traits_type::eof();
        piece_ = bytes_.substr(0, count);
        bytes_.remove_prefix(count);
        setg(piece_.data(), piece_.data(), piece_.data() + count);
        return traits_type::to_int_type(piece_[0]);
    }

  private:
    std::string_view bytes_;
    std::string piece_;
    std::size_t size_ = 0;
};

AskInvalidChar Answering(InvalidCharAnswer answer) {
    return [answer](const InvalidChar& invalid) {
        Require(!invalid.Character.empty() && invalid.Character.size() <= 4, "what was invalid");
        Require(invalid.Place.Line >= 1 && invalid.Place.Column >= 1, "no place");
        Require(Printable(InvalidCharText(invalid.Character)), "a question that garbles a line");
        return answer;
    };
}

bool SameReply(const ReadReply& a, const ReadReply& b) {
    return a.Code == b.Code && a.Cancelled == b.Cancelled && a.Place == b.Place;
}

void CheckLoaded(const Board& board) {
    for (const std::uint8_t code : board.Cell)
        Require(code <= kMan || code == kManOnGoal, "a code that no level has");
    Require(board.ManPos >= 0 && board.ManPos < kCells, "a man beyond the board");
    const bool walls = board.MaxRow > 0;
    Require(
        !walls || (board.MaxRow - board.MinRow < Maxrow && board.MaxCol - board.MinCol < Maxcol &&
                   board.MinRow >= 1 && board.MinCol >= 1),
        "walls beyond the board");
}

// A few positions of a search: whatever level was read, the solver takes it or refuses it.
void Solve(const Board& board) {
    StopAt hooks(20);
    Solver solver;
    Require(solver.ApplySizes({200, 8, 300}).Ok, "no memory");
    try {
        Result result = solver.AnalyseBoard(board, {.OptLevel = OptLevel::SomethingPlus});
        if (result == Result::Ok) result = solver.Search(hooks);
        if (result != Result::Ok) return;
        (void)solver.OptimizeMoves(hooks);
        solver.BuildSolutions();
    } catch (const SolverFault& fault) {
        Require(std::string_view(fault.what()).find("Internal") == std::string_view::npos,
                fault.what());
    }
}

void CheckFileReading(std::string_view bytes, InvalidCharAnswer answer) {
    std::istringstream whole{std::string(bytes)};
    Board board;
    board.Cell[5] = kBox;
    const ReadReply reply = ReadLevelStream(whole, board, Answering(answer));

    Pieces pieces(bytes);
    std::istream stream(&pieces);
    Board other;
    Require(SameReply(reply, ReadLevelStream(stream, other, Answering(answer))),
            "pieces of a level read otherwise");
    Require(board.Cell == other.Cell, "pieces of a level make another level");
    if (!reply.Loaded()) {
        Require(board.Cell == Board{}.Cell, "a refused level left something on the board");
        return;
    }
    CheckLoaded(board);
    std::istringstream printed(BoardText(board, "\n"));
    Board again;
    Require(ReadLevelStream(printed, again, {}).Loaded(), "a printed level is refused");
    Require(again.Cell == board.Cell, "a printed level reads otherwise");
    Solve(board);
}

void CheckPasting(std::string_view bytes, InvalidCharAnswer answer) {
    Board board;
    board.Cell[5] = kBox;
    const Board before = board;
    const ReadReply reply = ImportLevelText(bytes, board, Answering(answer));
    if (!reply.Loaded() || bytes.empty()) {
        Require(board == before, "a refused text changed the board");
        return;
    }
    CheckLoaded(board);
    Board again;
    Require(ImportLevelText(BoardText(board, "\r\n"), again, {}).Loaded(),
            "a printed level is refused");
    Require(again.Cell == board.Cell, "a printed level pastes otherwise");
}

}  // namespace

void FuzzCollection(std::string_view bytes) {
    const Collection collection = CollectionOf(bytes);
    Pieces pieces(bytes);
    std::istream stream(&pieces);
    CollectionReader reader(stream);
    std::int64_t line = 0;
    for (const CollectionLevel& level : collection.Levels) {
        const std::optional<CollectionLevel> other = reader.Next();
        Require(other == level, "pieces of a collection read otherwise");
        Require(level.Line > line, "levels out of order");
        line = level.Line;
        Board board;
        const AskInvalidChar ask = [](const InvalidChar&) { return InvalidCharAnswer::Cancel; };
        Require(ImportLevelText(level.BoardText, board, ask).Loaded(), "a level that is none");
        std::istringstream file(level.BoardText);
        Board same;
        Require(ReadLevelStream(file, same, ask).Loaded() && board.Cell == same.Cell,
                "a level that reads in two ways");
        Require(level.Solution.find_first_not_of("lurdLURD") == std::string::npos, "no moves");
    }
    Require(!reader.Next(), "pieces of a collection have a level more");
    const Collection again = CollectionOf(CollectionText(collection));
    Require(again.Skipped.empty(), "a written level is skipped");
    Require(again.Levels.size() == collection.Levels.size(), "a written level got lost");
    for (std::size_t i = 0; i < again.Levels.size(); ++i) {
        CollectionLevel level = again.Levels[i];
        level.Line = collection.Levels[i].Line;
        Require(level == collection.Levels[i], "a written level reads otherwise");
    }
    Require(CollectionText(again) == CollectionText(collection), "written levels read otherwise");
}

void FuzzLevelFile(std::string_view bytes) {
    CheckFileReading(bytes, InvalidCharAnswer::Space);
    CheckFileReading(bytes, InvalidCharAnswer::Cancel);
}

void FuzzPastedText(std::string_view bytes) {
    CheckPasting(bytes, InvalidCharAnswer::Space);
    CheckPasting(bytes, InvalidCharAnswer::Cancel);
}

void FuzzSettingsFile(std::string_view bytes) {
    const SettingsReply reply = ParseSettings(bytes);
    if (!reply.Fault.empty()) {
        Require(Printable(reply.Fault), "a fault that garbles a line");
        return;
    }
    const std::string text = SettingsText(reply.Values);
    const SettingsReply again = ParseSettings(text);
    Require(again.Fault.empty() && again.Values == reply.Values, "written settings read otherwise");
    Require(reply.Values.OptLevel >= 0 && reply.Values.OptLevel <= 4,
            "an optimizer level too many");
    // Whatever sizes stand in the file, the solver takes them or says why not.
    Sizes fields = reply.Values.Fields;
    if (fields.NumPos > 1000 && fields.NumPos <= 2147483647) fields.NumPos = 1000;
    Solver solver;
    const ApplyReply applied = solver.ApplySizes(fields);
    Require(applied.Ok == applied.Message.empty(), "refused without a word");
}

}  // namespace kavit::test
