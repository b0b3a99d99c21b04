#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

// The lines of a collection, each looked at by itself; how they hang together is the reader's.

namespace kavit {

inline constexpr std::size_t kLongestLine = 1 << 20;  // bytes; the rest of a longer line is dropped

struct CollectionLine {
    std::int64_t Number = 0;  // from 1
    std::string Text = {};    // without line end and trailing blanks
    bool Cut = false;         // it was longer
};

// Lines that end with LF, CR LF or CR, in bounded memory, with a look at those to come.
class CollectionLines {
  public:
    explicit CollectionLines(std::istream& stream);

    // Takes the next line; false at the end.
    bool Take(CollectionLine& line);
    // The line that comes after `ahead` others; nullptr when there is none.
    const CollectionLine* Peek(std::size_t ahead);

  private:
    bool Read(CollectionLine& line);
    bool Fill();

    std::istream& stream_;
    std::array<char, 1 << 16> buffer_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    std::int64_t number_ = 0;
    std::deque<CollectionLine> ahead_;
};

enum class LineKind {
    Empty,    // blanks at most
    Row,      // a row with a wall, or several in run-length form
    Broken,   // meant as a row, for most of it is, but some character is none of a level
    Squares,  // level characters without a wall: a row between rows, and text elsewhere
    Moves,    // move letters, digits and parentheses
    Text,
};
[[nodiscard]] LineKind KindOf(std::string_view line);

// The column, from 1, of the first character of a broken row that no row has.
[[nodiscard]] std::size_t BrokenAt(std::string_view line);

// The rows of a line of kind Row in the plain alphabet; "" for a row without any square. Empty when
// they have more squares together than any level.
struct RowsOfLine {
    std::vector<std::string> Rows;
    bool OtherAlphabet = false;  // the single-level readers would not read the same
};
[[nodiscard]] RowsOfLine RowsOf(std::string_view line);

enum class LineLabel { None, Title, Author, Collection, Comment, CommentEnd, Solution };

// The label that a line of text begins with, and what stands behind it without blanks around.
struct LabelledText {
    LineLabel Label = LineLabel::None;
    std::string_view Text;
};
[[nodiscard]] LabelledText LabelOf(std::string_view line);

[[nodiscard]] std::string_view Trimmed(std::string_view text);

}  // namespace kavit
