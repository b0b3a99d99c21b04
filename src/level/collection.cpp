#include "level/collection.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include "level/board.h"
#include "level/collection_block.h"
#include "level/collection_lines.h"
#include "level/collection_notes.h"
#include "level/level_reader.h"
#include "level/moves_text.h"
#include "level/refusal.h"
#include "level/steps.h"

namespace kavit {

namespace {

constexpr std::size_t kMostSkipped = 1000;                       // listed one by one
constexpr std::size_t kLongestComment = kMostNotes / kNoteCost;  // lines

// A level, or what stands in its place, and what was found to belong to it.
struct Entry {
    std::int64_t FirstLine = 0;
    std::int64_t LastLine = 0;
    CollectionBlock Rows;
    std::string Fault;  // why it can't be read, if so
    NoteLines Notes;
    std::string Solution;
};

// The last letter is a push.
bool EndsWithPush(std::string_view moves) {
    const std::size_t last = moves.find_last_of("lurdLURD");
    return last != std::string_view::npos && IsPush(moves[last]);
}

}  // namespace

class CollectionReader::Reading {
  public:
    explicit Reading(std::istream& stream) : stream_(stream), lines_(stream) {}

    std::optional<CollectionLevel> Next();

    std::vector<SkippedLines> Skipped;
    CollectionHeader Header;
    std::int64_t Blocks = 0;
    bool OtherAlphabet = false;

    [[nodiscard]] bool Failed() const { return stream_.bad(); }

  private:
    void TakeLine(const CollectionLine& line);
    void TakeRow(const CollectionLine& line, bool broken);
    void TakeText(const CollectionLine& line);
    void TakeComment(const CollectionLine& line, std::string_view behind);
    void EndSquares();
    void TakeMoves(const CollectionLine& line);
    void EndMoves();
    void StartEntry(std::int64_t line);
    void ShareOutText(NoteLines* below);
    void EndEntry();
    void Skip(std::int64_t first, std::int64_t last, std::string why);

    std::istream& stream_;
    CollectionLines lines_;
    std::optional<CollectionLevel> ready_;
    std::int64_t levels_ = 0;

    std::optional<Entry> entry_;           // the last rows met
    std::vector<CollectionLine> squares_;  // below its last row
    std::vector<CollectionLine> moves_;
    std::size_t movesSize_ = 0;
    CollectionNotes notes_;

    bool ended_ = false;
    bool rowAbove_ = false;      // the line above is a row of entry_
    bool movesNamed_ = false;    // by a "Solution" line
    bool solutionNext_ = false;  // such a line was met, and nothing but empty lines since
};

std::optional<CollectionLevel> CollectionReader::Reading::Next() {
    CollectionLine line;
    while (!ready_ && !ended_) {
        if (lines_.Take(line)) {
            TakeLine(line);
            continue;
        }
        ended_ = true;
        EndSquares();
        EndMoves();
        ShareOutText(nullptr);
        EndEntry();
    }
    return std::exchange(ready_, {});
}

void CollectionReader::Reading::TakeLine(const CollectionLine& line) {
    const LineKind kind = line.Cut ? LineKind::Broken : KindOf(line.Text);
    if (kind != LineKind::Moves) EndMoves();
    if (kind == LineKind::Row || kind == LineKind::Broken) {
        TakeRow(line, kind == LineKind::Broken);
        return;
    }
    if (kind == LineKind::Squares && rowAbove_ && squares_.size() < Maxrow) {
        squares_.push_back(line);
        return;
    }
    EndSquares();
    rowAbove_ = false;
    switch (kind) {
        case LineKind::Empty:
            notes_.TakeEmptyLine();
            break;
        case LineKind::Moves:
            TakeMoves(line);
            break;
        default:
            TakeText(line);
    }
}

void CollectionReader::Reading::TakeRow(const CollectionLine& line, bool broken) {
    if (!rowAbove_) StartEntry(line.Number);
    for (const CollectionLine& squares : squares_) entry_->Rows.AddRow(squares.Text);
    squares_.clear();
    rowAbove_ = true;
    solutionNext_ = false;
    notes_.TakeRow();
    entry_->LastLine = line.Number;
    const RowsOfLine rows = broken ? RowsOfLine{} : RowsOf(line.Text);
    if (rows.Rows.empty() && entry_->Fault.empty()) {
        entry_->Fault = "line " + std::to_string(line.Number);
        const std::size_t column = BrokenAt(line.Text);
        if (line.Cut || !broken) {
            entry_->Fault += " is too long";
        } else if (column > line.Text.size()) {
            entry_->Fault += " has a count without a square";
        } else {
            entry_->Fault += ", column " + std::to_string(column) + " is no level character";
        }
    }
    OtherAlphabet = OtherAlphabet || rows.OtherAlphabet;
    for (const std::string& row : rows.Rows) entry_->Rows.AddRow(row);
}

// Level characters without a wall, below a row, and no row came after them.
void CollectionReader::Reading::EndSquares() {
    for (const CollectionLine& line : squares_) {
        notes_.TakeText(NoteLine::Kind::Plain, Trimmed(line.Text), line.Number);
    }
    squares_.clear();
}

// Of lines that are too much together only the last one's number is kept.
void CollectionReader::Reading::TakeMoves(const CollectionLine& line) {
    if (moves_.empty()) movesNamed_ = solutionNext_;
    movesSize_ += line.Text.size();
    if (movesSize_ <= kLongestLine) {
        moves_.push_back(line);
    } else if (moves_.back().Text.empty()) {
        moves_.back().Number = line.Number;
    } else {
        moves_.push_back({.Number = line.Number});
    }
}

void CollectionReader::Reading::EndMoves() {
    if (moves_.empty()) return;
    std::string joined;
    for (const CollectionLine& line : moves_) joined += line.Text;
    const std::vector<CollectionLine> lines = std::exchange(moves_, {});
    const bool tooLong = std::exchange(movesSize_, 0) > joined.size();
    solutionNext_ = false;
    if (!entry_ || (!movesNamed_ && !EndsWithPush(joined))) {
        for (const CollectionLine& line : lines) {
            notes_.TakeText(NoteLine::Kind::Plain, line.Text, line.Number);
        }
        return;
    }
    std::optional<std::string> moves;
    if (!tooLong) moves = ExpandMoves(joined);
    if (!moves) {
        Skip(lines.front().Number, lines.back().Number,
             "moves that make no sense, or too many of them");
    } else if (entry_->Solution.empty()) {
        entry_->Solution = *std::move(moves);
    } else {
        notes_.TakeText(NoteLine::Kind::Comment, "Solution: " + joined, lines.front().Number);
    }
}

void CollectionReader::Reading::TakeText(const CollectionLine& line) {
    using Kind = NoteLine::Kind;
    const LabelledText labelled = LabelOf(line.Text);
    if (labelled.Label == LineLabel::Solution && entry_) {
        solutionNext_ = true;
        if (labelled.Text.empty()) return;
        moves_.push_back({.Number = line.Number, .Text = std::string(labelled.Text)});
        movesSize_ = labelled.Text.size();
        movesNamed_ = true;
        return;
    }
    solutionNext_ = false;
    switch (labelled.Label) {
        case LineLabel::Title:
            return notes_.TakeText(Kind::Title, labelled.Text, line.Number);
        case LineLabel::Author:
            return notes_.TakeText(Kind::Author, labelled.Text, line.Number);
        case LineLabel::Comment:
            return TakeComment(line, labelled.Text);
        case LineLabel::CommentEnd:
            return;
        case LineLabel::Collection:
            if (entry_) break;
            notes_.TakeText(Kind::Title, labelled.Text, line.Number);
            notes_.MarkOfFile();
            return;
        default:
            break;
    }
    std::string_view words = Trimmed(line.Text);
    if (words[0] == ';') words = Trimmed(words.substr(1));
    notes_.TakeText(Kind::Plain, words, line.Number);
}

void CollectionReader::Reading::TakeComment(const CollectionLine& line, std::string_view behind) {
    notes_.TakeText(NoteLine::Kind::Comment, behind, line.Number);
    std::size_t size = 0;
    for (std::size_t ahead = 0; ahead < kLongestComment && size < kMostNotes; ++ahead) {
        const CollectionLine* next = lines_.Peek(ahead);
        if (next == nullptr) return;
        size += next->Text.size();
        const LineLabel label = LabelOf(next->Text).Label;
        if (label == LineLabel::Comment) return;
        if (label != LineLabel::CommentEnd) continue;
        CollectionLine taken;
        for (; ahead > 0 && lines_.Take(taken); --ahead) {
            notes_.TakeText(NoteLine::Kind::Comment, taken.Text, taken.Number);
        }
        (void)lines_.Take(taken);
        return;
    }
}

void CollectionReader::Reading::StartEntry(std::int64_t line) {
    NoteLines notes;
    ShareOutText(&notes);
    EndEntry();
    entry_.emplace();
    entry_->FirstLine = line;
    entry_->Notes = std::move(notes);
    ++Blocks;
}

void CollectionReader::Reading::ShareOutText(NoteLines* below) {
    const SkippedLines tooMuch = notes_.TakeTooMuch();
    if (tooMuch.First > 0) Skip(tooMuch.First, tooMuch.Last, "more text than is kept");
    notes_.ShareOut(entry_ ? &entry_->Notes : nullptr, below);
    if (Blocks <= 1) Header = notes_.Header();
}

void CollectionReader::Reading::EndEntry() {
    if (!entry_) return;
    CollectionLevel level;
    if (entry_->Fault.empty()) level.BoardText = entry_->Rows.TakeRows(entry_->Fault);
    if (level.BoardText.empty()) return Skip(entry_->FirstLine, entry_->LastLine, entry_->Fault);
    level.Index = ++levels_;
    level.Line = entry_->FirstLine;
    CollectionHeader about = Describe(entry_->Notes);
    level.Title = std::move(about.Title);
    level.Author = std::move(about.Author);
    level.Comment = std::move(about.Comment);
    level.Solution = std::move(entry_->Solution);
    ready_ = std::move(level);
}

void CollectionReader::Reading::Skip(std::int64_t first, std::int64_t last, std::string why) {
    if (Skipped.size() < kMostSkipped) {
        Skipped.push_back({first, last, std::move(why)});
    } else {
        Skipped.back() = {Skipped.back().First, last, "much that is no level"};
    }
}

CollectionReader::CollectionReader(std::istream& stream)
    : reading_(std::make_unique<Reading>(stream)) {}
CollectionReader::~CollectionReader() = default;

std::optional<CollectionLevel> CollectionReader::Next() {
    return reading_->Next();
}
std::vector<SkippedLines> CollectionReader::TakeSkipped() {
    return std::exchange(reading_->Skipped, {});
}
const CollectionHeader& CollectionReader::Header() const {
    return reading_->Header;
}
bool CollectionReader::Failed() const {
    return reading_->Failed();
}
bool CollectionReader::OtherAlphabet() const {
    return reading_->OtherAlphabet;
}
std::int64_t CollectionReader::Blocks() const {
    return reading_->Blocks;
}

Collection ReadCollection(std::istream& stream) {
    CollectionReader reader(stream);
    Collection collection;
    bool more = true;
    while (more) {
        std::optional<CollectionLevel> level = reader.Next();
        more = level.has_value();
        if (more) collection.Levels.push_back(*std::move(level));
        for (SkippedLines& skipped : reader.TakeSkipped()) {
            collection.Skipped.push_back(std::move(skipped));
        }
    }
    collection.Title = reader.Header().Title;
    collection.Author = reader.Header().Author;
    collection.Comment = reader.Header().Comment;
    return collection;
}

bool IsCollection(std::istream& stream) {
    CollectionReader reader(stream);
    int withMan = 0;
    bool whole = false;
    while (const std::optional<CollectionLevel> level = reader.Next()) {
        if (level->BoardText.find_first_of("@+") != std::string::npos) ++withMan;
        Board board;
        if (ImportLevelText(level->BoardText, board, {}).Loaded()) {
            const std::vector<Refusal> refusals = WhyRefused(board);
            whole =
                whole || refusals.empty() || refusals.front().Kind == RefusalKind::SolvedAlready;
        }
        if (withMan > 1 || reader.OtherAlphabet()) return true;
    }
    return reader.OtherAlphabet() || (whole && reader.Blocks() > 1);
}

}  // namespace kavit
