#pragma once

#include <array>
#include <cstdint>
#include <istream>
#include <string_view>

namespace kavit {

// Level text, character by character, from a stream of any length in a fixed buffer.
//
// LF, CR LF and a lone CR end a line; a byte order mark at the start is dropped. A character is a
// whole UTF-8 sequence, so that a letter of another alphabet takes one column. A byte that belongs
// to no well-formed sequence is a character of its own. Nothing is read ahead of what decides the
// next answer, so that text typed at a terminal is taken as it comes.
class LevelText {
  public:
    explicit LevelText(std::istream& stream) : stream_(stream) { SkipByteOrderMark(); }

    // True when no further line begins here, be it that the text ended or that reading failed.
    [[nodiscard]] bool AtEnd();
    [[nodiscard]] bool Failed() const { return stream_.bad(); }
    // The next character of the line, valid until the next call; "" at the end of the line, which
    // is then taken.
    [[nodiscard]] std::string_view Next();
    // Drops the rest of the line; true when it held a "#".
    bool SkipLine();

    // Where the last character of Next() stands, both counted from 1; the column counts characters
    // and stops counting at the end of the line.
    [[nodiscard]] std::int64_t Line() const { return line_; }
    [[nodiscard]] std::int64_t Column() const { return column_; }

  private:
    bool Need(std::size_t count);
    std::size_t SequenceLength();
    void TakeLineEnd();
    void DropPendingLf();
    void SkipByteOrderMark();

    std::istream& stream_;
    std::array<char, 8192> buffer_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    bool pendingLf_ = false;  // a CR was taken; an LF that follows belongs to it
    std::int64_t line_ = 1;
    std::int64_t column_ = 0;
};

}  // namespace kavit
