#include "level/collection.h"

#include <algorithm>
#include <deque>
#include <sstream>
#include <utility>

#include "level/board.h"
#include "level/collection_lines.h"
#include "level/level_reader.h"
#include "level/moves_text.h"
#include "level/refusal.h"

namespace kavit {

namespace {

constexpr std::size_t kMostText = 1 << 20;  // bytes kept of the text between two levels
constexpr std::size_t kTextLine = 64;       // what a line of it costs besides
constexpr std::size_t kLongestComment = kMostText / kTextLine;  // lines
constexpr std::size_t kMostSkipped = 1000;                      // listed one by one
constexpr int kFewestRows = 3;  // with fewer there is no square inside the walls

struct TextLine {
    enum class Kind { Plain, Title, Author, Comment } What;
    std::string Words;
};
using TextLines = std::vector<TextLine>;

// Lines of text that hang together.
struct Paragraph {
    TextLines Lines;
    bool TouchesAbove = false;
    bool TouchesBelow = false;
    bool OfFile = false;  // it has a "Collection:" line
};

// Rows that hang together, and what was found to belong to them.
struct Block {
    std::int64_t FirstLine = 0;
    std::int64_t LastLine = 0;
    std::int64_t Height = 0;
    std::vector<std::string> Rows;  // one more than fit at most
    std::size_t FirstCol = std::string::npos;
    std::size_t LastCol = 0;
    std::string Fault;  // why it can't be read, if so
    TextLines Text;
    std::string Solution;
};

void Append(TextLines& text, TextLines&& more) {
    std::move(more.begin(), more.end(), std::back_inserter(text));
    more.clear();
}

// A comment must not hold what begins or ends a comment.
std::string_view WithoutCommentLabels(std::string_view line) {
    for (;;) {
        const LabelledText labelled = LabelOf(line);
        const bool comment =
            labelled.Label == LineLabel::Comment || labelled.Label == LineLabel::CommentEnd;
        if (!comment) return line;
        line = labelled.Text;
    }
}

CollectionHeader Describe(const TextLines& text) {
    using Kind = TextLine::Kind;
    CollectionHeader header;
    std::vector<std::string> comment;
    const bool labelled = std::any_of(
        text.begin(), text.end(), [](const TextLine& line) { return line.What == Kind::Title; });
    for (const TextLine& line : text) {
        const bool title = line.What == Kind::Title || (line.What == Kind::Plain && !labelled);
        if (title && header.Title.empty()) {
            header.Title = line.Words;
        } else if (line.What == Kind::Author && header.Author.empty()) {
            header.Author = line.Words;
        } else {
            comment.emplace_back(WithoutCommentLabels(line.Words));
        }
    }
    while (!comment.empty() && comment.back().empty()) comment.pop_back();
    for (const std::string& line : comment) {
        if (!header.Comment.empty()) header.Comment += '\n';
        header.Comment += line;  // empty lines in front get lost
    }
    return header;
}

bool HasSquares(const std::vector<std::string>& rows, std::string_view squares) {
    return std::any_of(rows.begin(), rows.end(), [squares](const std::string& row) {
        return row.find_first_of(squares) != std::string::npos;
    });
}

void AddRow(Block& block, const std::string& row, std::int64_t& rowsSeen) {
    const std::size_t first = row.find('#');
    if (first == std::string::npos && block.Height == 0) return;
    ++rowsSeen;
    if (first != std::string::npos) {
        block.FirstCol = std::min(block.FirstCol, first);
        block.LastCol = std::max(block.LastCol, row.rfind('#'));
        block.Height = rowsSeen;
    }
    if (block.Rows.size() <= Maxrow) block.Rows.push_back(row.substr(0, kMostText));
}

// Cuts the rows down to the rectangle of the walls, as the single-level readers do; says why this
// is no level, or "".
std::string TakeShape(Block& block) {
    if (!block.Fault.empty()) return block.Fault;
    const std::size_t width = block.LastCol - block.FirstCol + 1;
    if (block.Height > Maxrow) {
        return std::to_string(block.Height) + " rows, and " + std::to_string(Maxrow) +
               " are the most";
    }
    if (width > Maxcol) {
        return std::to_string(width) + " columns, and " + std::to_string(Maxcol) + " are the most";
    }
    if (block.Height < kFewestRows) return "too few rows for a level";
    block.Rows.resize(static_cast<std::size_t>(block.Height));
    for (std::string& row : block.Rows) {
        row = row.size() > block.FirstCol ? row.substr(block.FirstCol, width) : "";
        row.resize(row.find_last_not_of(' ') + 1);
        if (row.empty()) row = " ";
    }
    return HasSquares(block.Rows, "@+$*.") ? "" : "no man, no box and no goal";
}

// The last letter is a push.
bool EndsWithPush(std::string_view moves) {
    const std::size_t last = moves.find_last_of("lurdLURD");
    return last != std::string_view::npos && moves[last] < 'a';
}

}  // namespace

class CollectionReader::Reading {
  public:
    explicit Reading(std::istream& stream) : stream_(stream), lines_(stream) {}

    std::optional<CollectionLevel> Next();

    std::vector<SkippedLines> Skipped;
    CollectionHeader Header;
    bool OtherAlphabet = false;
    std::int64_t Blocks = 0;

    [[nodiscard]] bool Failed() const { return stream_.bad(); }

  private:
    void TakeLine(const CollectionLine& line);
    void TakeRow(const CollectionLine& line, bool broken);
    void TakeText(const CollectionLine& line);
    void TakeComment(const CollectionLine& line, std::string_view behind);
    void AddText(TextLine::Kind kind, std::string_view words, std::int64_t line);
    void EndSquares();
    void EndMoves();
    void StartBlock(std::int64_t line);
    void ShareOutText(TextLines* below);
    void EndBlock();
    void Skip(std::int64_t first, std::int64_t last, std::string why);

    std::istream& stream_;
    CollectionLines lines_;
    bool ended_ = false;
    std::deque<CollectionLevel> ready_;
    std::int64_t levels_ = 0;

    std::optional<Block> block_;  // the last rows met
    std::int64_t rowsSeen_ = 0;
    bool rowAbove_ = false;     // the line above is a row of it
    bool touchesRows_ = false;  // no empty line since its last row
    std::vector<CollectionLine> squares_;

    std::vector<CollectionLine> moves_;
    std::size_t movesSize_ = 0;
    bool movesNamed_ = false;    // by a "Solution" line
    bool solutionNext_ = false;  // such a line was met, and nothing but empty lines since

    std::vector<Paragraph> gap_;  // the text since the last row
    bool paragraphOpen_ = false;
    std::size_t gapSize_ = 0;
    SkippedLines tooMuch_;  // text beyond what is kept
    TextLines headerText_;
    TextLines candidate_;  // of the header, or of the first level
    bool textAbove_ = false;
};

std::optional<CollectionLevel> CollectionReader::Reading::Next() {
    CollectionLine line;
    while (ready_.empty() && !ended_) {
        if (lines_.Take(line)) {
            TakeLine(line);
            continue;
        }
        ended_ = true;
        EndSquares();
        EndMoves();
        ShareOutText(nullptr);
        EndBlock();
    }
    if (ready_.empty()) return std::nullopt;
    CollectionLevel level = std::move(ready_.front());
    ready_.pop_front();
    return level;
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
            touchesRows_ = false;
            paragraphOpen_ = false;
            break;
        case LineKind::Moves:
            if (moves_.empty()) movesNamed_ = solutionNext_;
            movesSize_ += line.Text.size();
            if (movesSize_ <= kLongestLine || moves_.empty()) moves_.push_back(line);
            break;
        default:
            TakeText(line);
    }
}

void CollectionReader::Reading::TakeRow(const CollectionLine& line, bool broken) {
    if (!rowAbove_) StartBlock(line.Number);
    for (const CollectionLine& squares : squares_) AddRow(*block_, squares.Text, rowsSeen_);
    squares_.clear();
    rowAbove_ = touchesRows_ = true;
    paragraphOpen_ = solutionNext_ = false;
    block_->LastLine = line.Number;
    const RowsOfLine rows = broken ? RowsOfLine{} : RowsOf(line.Text);
    if (rows.Rows.empty() && block_->Fault.empty()) {
        block_->Fault = "line " + std::to_string(line.Number);
        const std::size_t column = BrokenAt(line.Text);
        if (line.Cut || !broken) {
            block_->Fault += " is too long";
        } else if (column > line.Text.size()) {
            block_->Fault += " ends in a count";
        } else {
            block_->Fault += ", column " + std::to_string(column) + " is no level character";
        }
    }
    OtherAlphabet = OtherAlphabet || rows.OtherAlphabet;
    for (const std::string& row : rows.Rows) AddRow(*block_, row, rowsSeen_);
}

// Level characters without a wall, below a row, and no row came after them.
void CollectionReader::Reading::EndSquares() {
    for (const CollectionLine& line : squares_) {
        AddText(TextLine::Kind::Plain, Trimmed(line.Text), line.Number);
    }
    squares_.clear();
}

void CollectionReader::Reading::EndMoves() {
    if (moves_.empty()) return;
    std::string joined;
    for (const CollectionLine& line : moves_) joined += line.Text;
    const std::vector<CollectionLine> lines = std::exchange(moves_, {});
    const bool tooLong = std::exchange(movesSize_, 0) > joined.size();
    solutionNext_ = false;
    if (!block_ || (!movesNamed_ && !EndsWithPush(joined))) {
        for (const CollectionLine& line : lines) {
            AddText(TextLine::Kind::Plain, line.Text, line.Number);
        }
        return;
    }
    std::optional<std::string> moves;
    if (!tooLong) moves = ExpandMoves(joined);
    if (!moves) {
        Skip(lines.front().Number, lines.back().Number,
             "moves that make no sense, or too many of them");
    } else if (block_->Solution.empty()) {
        block_->Solution = *std::move(moves);
    } else {
        AddText(TextLine::Kind::Comment, "Solution: " + joined, lines.front().Number);
    }
}

void CollectionReader::Reading::TakeText(const CollectionLine& line) {
    using Kind = TextLine::Kind;
    const LabelledText labelled = LabelOf(line.Text);
    if (labelled.Label == LineLabel::Solution && block_) {
        solutionNext_ = true;
        if (labelled.Text.empty()) return;
        moves_.push_back({line.Number, std::string(labelled.Text), false});
        movesSize_ = labelled.Text.size();
        movesNamed_ = true;
        return;
    }
    solutionNext_ = false;
    switch (labelled.Label) {
        case LineLabel::Title:
            return AddText(Kind::Title, labelled.Text, line.Number);
        case LineLabel::Author:
            return AddText(Kind::Author, labelled.Text, line.Number);
        case LineLabel::Comment:
            return TakeComment(line, labelled.Text);
        case LineLabel::CommentEnd:
            return;
        case LineLabel::Collection:
            if (block_) break;
            AddText(Kind::Title, labelled.Text, line.Number);
            gap_.back().OfFile = true;
            return;
        default:
            break;
    }
    std::string_view words = Trimmed(line.Text);
    if (words[0] == ';') words = Trimmed(words.substr(1));
    AddText(Kind::Plain, words, line.Number);
}

void CollectionReader::Reading::TakeComment(const CollectionLine& line, std::string_view behind) {
    AddText(TextLine::Kind::Comment, behind, line.Number);
    std::size_t size = 0;
    for (std::size_t ahead = 0; ahead < kLongestComment && size < kMostText; ++ahead) {
        const CollectionLine* next = lines_.Peek(ahead);
        if (next == nullptr) return;
        size += next->Text.size();
        const LineLabel label = LabelOf(next->Text).Label;
        if (label == LineLabel::Comment) return;
        if (label != LineLabel::CommentEnd) continue;
        CollectionLine taken;
        for (; ahead > 0 && lines_.Take(taken); --ahead) {
            AddText(TextLine::Kind::Comment, taken.Text, taken.Number);
        }
        (void)lines_.Take(taken);
        return;
    }
}

void CollectionReader::Reading::AddText(TextLine::Kind kind, std::string_view words,
                                        std::int64_t line) {
    gapSize_ += words.size() + kTextLine;
    if (!paragraphOpen_ && (gap_.empty() || gapSize_ <= kMostText)) {
        gap_.push_back({{}, touchesRows_, false, false});
    }
    paragraphOpen_ = true;
    if (gapSize_ <= kMostText) {
        gap_.back().Lines.push_back({kind, std::string(words)});
        return;
    }
    if (tooMuch_.First == 0) tooMuch_.First = line;
    tooMuch_.Last = line;
}

void CollectionReader::Reading::StartBlock(std::int64_t line) {
    if (paragraphOpen_) gap_.back().TouchesBelow = true;
    TextLines text;
    ShareOutText(&text);
    EndBlock();
    block_.emplace();
    block_->FirstLine = line;
    block_->Text = std::move(text);
    rowsSeen_ = 0;
    ++Blocks;
}

// Decides where the text of a gap belongs; `below` is the text of the level that begins, if any.
void CollectionReader::Reading::ShareOutText(TextLines* below) {
    if (tooMuch_.First > 0) Skip(tooMuch_.First, tooMuch_.Last, "more text than is kept");
    tooMuch_ = {};
    gapSize_ = 0;
    const auto touchesNone = [](const Paragraph& p) { return !p.TouchesAbove && !p.TouchesBelow; };
    if (!block_) {
        for (Paragraph& paragraph : gap_) {
            const bool last = &paragraph == &gap_.back() && !paragraph.OfFile && below != nullptr;
            textAbove_ = last && paragraph.TouchesBelow;
            TextLines& to = !last ? headerText_ : textAbove_ ? *below : candidate_;
            Append(to, std::move(paragraph.Lines));
        }
    } else if (Blocks == 1) {
        const bool between = below != nullptr && std::any_of(gap_.begin(), gap_.end(), touchesNone);
        if (!candidate_.empty() && (between || below == nullptr)) {
            textAbove_ = true;
            Append(candidate_, std::move(block_->Text));
            block_->Text = std::move(candidate_);
        } else {
            Append(headerText_, std::move(candidate_));
        }
        candidate_.clear();
    }
    if (block_) {
        for (Paragraph& paragraph : gap_) {
            const bool one = paragraph.TouchesAbove != paragraph.TouchesBelow;
            const bool up = below == nullptr || (one ? paragraph.TouchesAbove : !textAbove_);
            Append(up ? block_->Text : *below, std::move(paragraph.Lines));
        }
    }
    gap_.clear();
    if (Blocks <= 1) Header = Describe(headerText_);
}

void CollectionReader::Reading::EndBlock() {
    if (!block_) return;
    const std::string fault = TakeShape(*block_);
    if (!fault.empty()) return Skip(block_->FirstLine, block_->LastLine, fault);
    CollectionLevel level;
    level.Index = ++levels_;
    level.Line = block_->FirstLine;
    for (const std::string& row : block_->Rows) {
        if (!level.BoardText.empty()) level.BoardText += '\n';
        level.BoardText += row;
    }
    CollectionHeader about = Describe(block_->Text);
    level.Title = std::move(about.Title);
    level.Author = std::move(about.Author);
    level.Comment = std::move(about.Comment);
    level.Solution = std::move(block_->Solution);
    ready_.push_back(std::move(level));
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

Collection ReadCollection(std::string_view text) {
    std::istringstream stream{std::string(text)};
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
