#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "level/collection.h"

// The text of a collection: rules 3 to 5 of collection.h, without the rows and the solutions.

namespace kavit {

// As many bytes are kept of the text between two levels; each line costs some besides its words.
inline constexpr std::size_t kMostNotes = 1 << 20;
inline constexpr std::size_t kNoteCost = 64;

struct NoteLine {
    enum class Kind { Plain, Title, Author, Comment } What;
    std::string Words;
};
using NoteLines = std::vector<NoteLine>;

// Title, author and comment of a level or of the file (rule 5).
[[nodiscard]] CollectionHeader Describe(const NoteLines& notes);

// Gathers the text between two levels and shares it out to them and to the file (rules 3 and 4).
class CollectionNotes {
  public:
    void TakeText(NoteLine::Kind kind, std::string_view words, std::int64_t line);
    // The text just taken, and what hangs together with it, is about the file.
    void MarkOfFile() { gap_.back().OfFile = true; }
    void TakeEmptyLine() { open_ = touchesRows_ = false; }
    void TakeRow();

    // Gives the text since the last level to the one above and the one that begins below, each
    // nullptr where there is none.
    void ShareOut(NoteLines* above, NoteLines* below);
    // Text beyond what is kept of one gap since the last call; First is 0 when there was none.
    [[nodiscard]] SkippedLines TakeTooMuch();
    // Complete once the text between the first two levels was shared out.
    [[nodiscard]] CollectionHeader Header() const { return Describe(file_); }

  private:
    // Lines without an empty one between.
    struct Paragraph {
        NoteLines Lines;
        bool TouchesAbove = false;
        bool TouchesBelow = false;
        bool OfFile = false;
    };
    void ShareOutAboveFirst(NoteLines* below);
    void ShareOutCandidate(NoteLines& first, bool more);

    std::vector<Paragraph> gap_;
    std::size_t size_ = 0;
    SkippedLines tooMuch_;
    NoteLines file_;
    NoteLines candidate_;       // of the file, or of the first level
    bool open_ = false;         // the line above is text
    bool touchesRows_ = false;  // no empty line since the last row
    bool textAbove_ = false;    // rule 4
};

}  // namespace kavit
