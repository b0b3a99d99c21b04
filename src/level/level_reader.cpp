#include "level/level_reader.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>
#include <utility>

#include "level/import_grid.h"
#include "level/level_text.h"
#include "level/shown_text.h"

namespace kavit {

namespace {

enum class RowKind { Empty, Skipped, Taken, Refused };

constexpr std::size_t kRowLength = ImportGrid::kCols;
constexpr std::string_view kRowCharacters = " .$*#@+-_";

bool IsFloorSign(std::string_view character) {
    return character == "-" || character == "_";
}

// One reading of either kind: fills the grid and the wall extent of the board, row by row.
class Reading {
  public:
    Reading(std::istream& stream, Board& board, const AskInvalidChar& ask)
        : text_(stream), board_(board), ask_(ask) {}

    ReadReply ReadFileRows();
    ReadReply ReadPastedRows();

  private:
    RowKind ReadLine();
    RowKind Drop(std::int64_t line, bool wall);
    RowKind TakeRow(int row, bool checkWalls);
    bool TakeCharacter(int row, int col, std::string_view character, bool checkWalls);
    bool Refuse(Result code, TextPlace place);
    TextPlace FirstWallFrom(int row, int col) const;

    LevelText text_;
    Board& board_;
    const AskInvalidChar& ask_;
    ImportGrid grid_;
    std::vector<std::string> row_;  // the characters of a line, as far as the grid reaches
    std::array<std::int64_t, ImportGrid::kRows + 1> lineOfRow_{};
    ReadReply reply_;
};

// Always false, so that a refusal can be returned in one go.
bool Reading::Refuse(Result code, TextPlace place) {
    reply_.Code = code;
    reply_.Place = place;
    return false;
}

// Stores one character of a row; false when it ends the reading.
bool Reading::TakeCharacter(int row, int col, std::string_view character, bool checkWalls) {
    const TextPlace place{lineOfRow_[static_cast<std::size_t>(row)], col};
    const std::uint8_t code = CharToCell(character);
    if (code == kInvalidChar) {
        if (ask_ && ask_({character, place}) == InvalidCharAnswer::Cancel) {
            reply_.Cancelled = true;
            return Refuse(Result::CanCopy, place);
        }
    } else {
        grid_.Set(row, col, code);
        if (code == kWall) {
            WidenExtent(board_, row, col);
            if (checkWalls && IsTooHigh(board_)) return Refuse(Result::TooHigh, place);
            if (checkWalls && IsTooWide(board_)) return Refuse(Result::TooWide, place);
        }
    }
    // The last column of the grid is one too many.
    return col < ImportGrid::kCols || Refuse(Result::LineTooLong, place);
}

RowKind Reading::Drop(std::int64_t line, bool wall) {
    if (wall) {
        ++reply_.Dropped;
        if (reply_.DroppedLines.size() < kMostDroppedLines) reply_.DroppedLines.push_back(line);
    }
    return RowKind::Skipped;
}

// Reads one line, of any length, into row_. A line that begins with "-" or "_" is read to its end
// before it is known to be a row. One that begins with a level character is a row at once, so it is
// read only until it is too long.
RowKind Reading::ReadLine() {
    const std::int64_t line = text_.Line();
    row_.clear();
    bool begun = false;         // a character other than a blank was met
    bool signFirst = false;     // and it was "-" or "_"
    bool rowCharacters = true;  // nothing else so far
    bool wall = false;
    for (std::string_view c = text_.Next(); !c.empty(); c = text_.Next()) {
        rowCharacters = rowCharacters && kRowCharacters.find(c) != std::string_view::npos;
        wall = wall || c == "#";
        if (!begun && c != " ") {
            begun = true;
            signFirst = IsFloorSign(c);
            if (!rowCharacters) return Drop(line, text_.SkipLine());
        }
        if (signFirst && !rowCharacters) return Drop(line, text_.SkipLine() || wall);
        if (row_.size() < kRowLength) row_.emplace_back(c);
        if (begun && !signFirst && row_.size() == kRowLength) break;
    }
    if (row_.empty()) return RowKind::Empty;
    if (rowCharacters && wall) {
        for (std::string& c : row_) {
            if (IsFloorSign(c)) c = " ";
        }
    } else if (signFirst) {
        return RowKind::Skipped;
    }
    return RowKind::Taken;
}

RowKind Reading::TakeRow(int row, bool checkWalls) {
    lineOfRow_[static_cast<std::size_t>(row)] = text_.Line();
    const RowKind kind = ReadLine();
    if (kind != RowKind::Taken) return kind;
    int col = 0;
    for (const std::string& character : row_) {
        if (!TakeCharacter(row, ++col, character, checkWalls)) return RowKind::Refused;
    }
    return RowKind::Taken;
}

// The first wall, in reading order, at or beyond this row and column of the grid.
TextPlace Reading::FirstWallFrom(int row, int col) const {
    for (int r = row; r <= ImportGrid::kRows; ++r) {
        for (int c = col; c <= ImportGrid::kCols; ++c) {
            if (grid_.At(r, c) == kWall) return {lineOfRow_[static_cast<std::size_t>(r)], c};
        }
    }
    return {};
}

ReadReply Reading::ReadFileRows() {
    ClearBoard(board_);
    board_.MinRow = ImportGrid::kRows;
    board_.MinCol = ImportGrid::kCols;
    board_.MaxRow = -1;
    board_.MaxCol = -1;
    int row = 1;
    while (!text_.AtEnd()) {
        // Even an empty line is one too many once the grid is full.
        if (row > ImportGrid::kRows) {
            Refuse(Result::TooManyLines, {text_.Line(), 1});
            return reply_;
        }
        const RowKind kind = TakeRow(row, false);
        if (kind == RowKind::Refused) return reply_;
        if (kind == RowKind::Taken) ++row;
    }
    if (text_.Failed()) {
        Refuse(Result::CantOpen, {});
        reply_.Reason = "reading failed in line " + std::to_string(text_.Line());
    } else if (IsTooHigh(board_)) {
        Refuse(Result::TooHigh, FirstWallFrom(board_.MinRow + Maxrow, 1));
    } else if (IsTooWide(board_)) {
        Refuse(Result::TooWide, FirstWallFrom(1, board_.MinCol + Maxcol));
    } else {
        CropToBoard(grid_, board_);
    }
    return reply_;
}

// The caller has counted the lines: there are at most as many as the grid has rows.
ReadReply Reading::ReadPastedRows() {
    board_.MinRow = board_.MinCol = 32767;
    board_.MaxRow = board_.MaxCol = 0;
    for (int row = 1; !text_.AtEnd(); ++row) {
        if (TakeRow(row, true) == RowKind::Refused) return reply_;
    }
    ClearBoard(board_);
    CropToBoard(grid_, board_);
    return reply_;
}

// A line end at the very end begins one more line.
std::int64_t CountLines(std::string_view text) {
    std::int64_t lines = 1;
    char last = '\0';
    for (const char c : text) {
        if (c == '\r' || (c == '\n' && last != '\r')) ++lines;
        last = c;
    }
    return lines;
}

ReadReply CantOpenReply(std::string reason) {
    ReadReply reply;
    reply.Code = Result::CantOpen;
    reply.Reason = std::move(reason);
    return reply;
}

}  // namespace

std::string InvalidCharText(std::string_view character) {
    std::string shown(character);
    const auto byte = static_cast<unsigned char>(character.empty() ? 0 : character.back());
    if (character.size() == 1 && ((byte <= 0x1F && byte != '\t') || byte >= 0x7F)) {
        shown = ByteNumber(character.back());
    }
    // U+0080 to U+009F, as in "\u0085": some terminals obey them.
    if (character.size() == 2 && character[0] == '\xC2' && byte < 0xA0) {
        shown = "\\u00" + ByteNumber(character.back()).substr(2);
    }
    return "Invalid char '" + shown + "' in Xsb; Assumed Space";
}

ReadReply ReadLevelStream(std::istream& stream, Board& board, const AskInvalidChar& ask) {
    if (!stream) {
        ClearBoard(board);
        return CantOpenReply("the stream is closed or broken");
    }
    return Reading(stream, board, ask).ReadFileRows();
}

ReadReply ReadLevelFile(const std::string& fileName, Board& board, const AskInvalidChar& ask) {
    if (fileName.empty()) {
        ReadReply reply;
        reply.Code = Result::NothingToOpen;
        return reply;
    }
    std::error_code error;
    const auto type = std::filesystem::status(fileName, error).type();
    using std::filesystem::file_type;
    if (type == file_type::directory) return CantOpenReply("it is a folder");
    if (type == file_type::character || type == file_type::block) {
        return CantOpenReply("it is a device");
    }
    errno = 0;
    std::ifstream file(fileName, std::ios::binary);
    if (!file) {
        return CantOpenReply(errno != 0 ? std::generic_category().message(errno) : "unknown fault");
    }
    return ReadLevelStream(file, board, ask);
}

ReadReply ImportLevelText(std::string_view text, Board& board, const AskInvalidChar& ask) {
    if (text.empty()) return {};
    if (CountLines(text) > ImportGrid::kRows) {
        ReadReply reply;
        reply.Code = Result::TooHigh;
        reply.Place = {ImportGrid::kRows + 1, 1};
        return reply;
    }
    std::istringstream stream{std::string(text)};
    Board next = board;
    ReadReply reply = Reading(stream, next, ask).ReadPastedRows();
    if (reply.Loaded()) board = next;
    return reply;
}

}  // namespace kavit
