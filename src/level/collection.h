#pragma once

#include <cstdint>
#include <istream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// Collections: texts with any number of levels, as players pass them on. In one text there can be
// rows as they are drawn, with blanks, "-" or "_" for floor; the letters p P b B o (also m M) for
// man, man on goal, box, box on goal and goal; rows in run-length form (3#-2$ is ###-$$), several
// of them in a line with "|" between; titles, authors, comments; and recorded solutions.
//
// What belongs to which level is decided by these rules alone:
//
// 1. Lines with a wall that consist of level characters are rows, and rows that follow one another
//    without an empty line are one level. Lines of level characters without a wall are rows where
//    they stand between rows. A line that is mostly level characters but has others, too, is a
//    broken row: it is not guessed at, and its level is skipped.
// 2. Moves behind a level are its solution: lines of move letters below a "Solution" line, or
//    without one when the last letter is a push, as that of a solution always is. Of several
//    solutions the first one counts.
// 3. Every other line is text, and lines of text without an empty one between hang together. Text
//    that touches the rows of one level belongs to it. Text that touches none, or two, belongs to
//    the level below when the first level has its text above, else to the level above.
// 4. The first level has its text above when text touches its rows from above; or when text that
//    touches none stands both above it and between it and the second level. All other text above
//    the first level, and what hangs together with a "Collection:" line, is about the whole file.
// 5. "Title:" and "Author:" name what follows on their line. "Comment:" takes the lines up to
//    "Comment-End:" where there is one before the next "Comment:", else the rest of its line. Of
//    text without such a word (a ";" in front is dropped) the first line is the title, if no other
//    is given, and the rest is comment.
//
// So every line with a "#" is a row of a level, is in some text, or is named as skipped.

namespace kavit {

struct CollectionLevel {
    std::int64_t Index = 0;  // from 1; what is skipped has none
    std::string Title;
    std::string Author;
    std::string Comment;    // lines joined by \n
    std::string BoardText;  // rows joined by \n, in the alphabet of the single-level readers
    std::string Solution;   // letter by letter; "" when none is recorded
    std::int64_t Line = 0;  // of the first row

    bool operator==(const CollectionLevel&) const = default;
};

// Lines that were left out, and why.
struct SkippedLines {
    std::int64_t First = 0;
    std::int64_t Last = 0;
    std::string Why;
};

struct CollectionHeader {
    std::string Title;
    std::string Author;
    std::string Comment;
};

struct Collection {
    std::string Title;
    std::string Author;
    std::string Comment;
    std::vector<CollectionLevel> Levels;
    std::vector<SkippedLines> Skipped;
};

// Reads a collection of any length level by level, in bounded memory. The stream must outlive it.
class CollectionReader {
  public:
    explicit CollectionReader(std::istream& stream);
    ~CollectionReader();

    // The next level; none at the end, or when reading failed.
    [[nodiscard]] std::optional<CollectionLevel> Next();
    // What was left out since the last call, as far as was read.
    [[nodiscard]] std::vector<SkippedLines> TakeSkipped();
    // Complete with the first level.
    [[nodiscard]] const CollectionHeader& Header() const;
    [[nodiscard]] bool Failed() const;
    // A row so far was in run-length form or written with letters.
    [[nodiscard]] bool OtherAlphabet() const;
    // How many levels were begun, skipped ones included.
    [[nodiscard]] std::int64_t Blocks() const;

  private:
    class Reading;
    std::unique_ptr<Reading> reading_;
};

// All of it at once.
[[nodiscard]] Collection ReadCollection(std::istream& stream);

// Whether a text is to be read as a collection: two of its levels have a man; or a level that is
// whole by itself stands beside other rows; or the alphabet is not that of the single-level
// readers. Any other text holds one level at most, and those readers take it as they do. Reads no
// more of the stream than it takes to know.
[[nodiscard]] bool IsCollection(std::istream& stream);

// The text of a collection, in a form that reads back as the same: for files of either ending.
[[nodiscard]] std::string CollectionText(const Collection& collection);

}  // namespace kavit
