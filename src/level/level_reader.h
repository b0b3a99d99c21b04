#pragma once

#include <cstdint>
#include <functional>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "level/board.h"
#include "level/result.h"

// Two readers fill the board from level text: one for a file (or any stream), one for pasted text.
// They share the alphabet and the grid, but not their limits: the file reader drops empty lines and
// measures the walls at the end, pasted text keeps its rows and is refused at the first wall too
// many. In both, a line whose first character other than a blank is no level character is a title
// or a comment, however long, and the longest row has 49 characters.
//
// Most level files write floor as "-" or "_" where a blank would get lost. A line that consists of
// level characters, "-" and "_" only and holds a wall is therefore a row in which both are floor.
// In any other line they are invalid characters like a letter: "- easy -" is a title. Of a row that
// begins with a level character only the 50 characters count that a row can have.

namespace kavit {

// A place in the text, both counted from 1 (columns in characters); 0: no place.
struct TextPlace {
    std::int64_t Line = 0;
    std::int64_t Column = 0;

    bool operator==(const TextPlace&) const = default;
};

// A character that no level has, met inside a row.
struct InvalidChar {
    std::string_view Character;  // one UTF-8 character, or one byte of broken UTF-8
    TextPlace Place;
};
enum class InvalidCharAnswer { Space, Cancel };

// Asks what to do with an invalid character. An empty function answers Space.
using AskInvalidChar = std::function<InvalidCharAnswer(const InvalidChar&)>;

// The question that goes with it. What would garble a line (a control character, a broken byte) is
// shown by its number, as in "\x1b".
[[nodiscard]] std::string InvalidCharText(std::string_view character);

struct ReadReply {
    Result Code = Result::Ok;  // Ok, or the number of the message to show
    bool Cancelled = false;    // the answer was Cancel: Code is CanCopy, Place the character
    TextPlace Place;           // what was refused: a row, a wall, a line too many
    std::string Reason;        // CantOpen: why, in the system's words
    // Lines that were taken as titles although they hold a "#": the first few, and how many.
    std::vector<std::int64_t> DroppedLines{};
    std::int64_t Dropped = 0;

    [[nodiscard]] bool Loaded() const { return Code == Result::Ok; }
};

inline constexpr std::size_t kMostDroppedLines = 20;  // as many are listed

// Reads a level file. A file that can't be opened leaves the board as it is; after any other
// failure, Cancel included, the board is cleared. A file of any size is read in bounded memory, and
// no further than the outcome needs. Devices are refused like folders: they need not end.
[[nodiscard]] ReadReply ReadLevelFile(const std::string& fileName, Board& board,
                                      const AskInvalidChar& ask);

// The same for a stream, from where it stands to its end. Before it is std::cin, call
// std::ios::sync_with_stdio(false): read through stdio, a broken input looks like an empty one, and
// every character costs a system library call.
[[nodiscard]] ReadReply ReadLevelStream(std::istream& stream, Board& board,
                                        const AskInvalidChar& ask);

// Reads pasted text, with line ends of any kind. The board changes only when all of it was read;
// empty text is Ok and changes nothing. The caller empties the level's name when it was Ok and the
// text was not empty.
[[nodiscard]] ReadReply ImportLevelText(std::string_view text, Board& board,
                                        const AskInvalidChar& ask);

}  // namespace kavit
