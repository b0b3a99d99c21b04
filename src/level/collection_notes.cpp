#include "level/collection_notes.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <utility>

#include "level/collection_lines.h"

namespace kavit {

namespace {

void Append(NoteLines& notes, NoteLines more) {
    std::move(more.begin(), more.end(), std::back_inserter(notes));
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

}  // namespace

CollectionHeader Describe(const NoteLines& notes) {
    using Kind = NoteLine::Kind;
    CollectionHeader header;
    std::vector<std::string> comment;
    const bool labelled = std::any_of(
        notes.begin(), notes.end(), [](const NoteLine& line) { return line.What == Kind::Title; });
    for (const NoteLine& line : notes) {
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

void CollectionNotes::TakeRow() {
    open_ = false;
    touchesRows_ = true;
}

void CollectionNotes::TakeText(NoteLine::Kind kind, std::string_view words, std::int64_t line) {
    size_ += words.size() + kNoteCost;
    const bool room = size_ <= kMostNotes;
    if (!open_ && (gap_.empty() || room))
        gap_.push_back({.Lines = {}, .TouchesAbove = touchesRows_});
    open_ = true;
    if (room) {
        gap_.back().Lines.push_back({kind, std::string(words)});
        return;
    }
    if (tooMuch_.First == 0) tooMuch_.First = line;
    tooMuch_.Last = line;
}

SkippedLines CollectionNotes::TakeTooMuch() {
    return std::exchange(tooMuch_, {});
}

// All but the last paragraph is about the file. The last one belongs to the first level when it
// touches it; else the text below that level will tell.
void CollectionNotes::ShareOutAboveFirst(NoteLines* below) {
    for (Paragraph& paragraph : gap_) {
        const bool last = &paragraph == &gap_.back() && !paragraph.OfFile && below != nullptr;
        textAbove_ = last && paragraph.TouchesBelow;
        NoteLines& to = !last ? file_ : textAbove_ ? *below : candidate_;
        Append(to, std::move(paragraph.Lines));
    }
}

void CollectionNotes::ShareOutCandidate(NoteLines& first, bool more) {
    const bool between = more && std::any_of(gap_.begin(), gap_.end(), [](const Paragraph& p) {
                             return !p.TouchesAbove && !p.TouchesBelow;
                         });
    if (between || !more) {
        textAbove_ = true;
        assert(first.empty());  // its text above is the candidate
        first = std::exchange(candidate_, {});
    } else {
        Append(file_, std::move(candidate_));
    }
}

void CollectionNotes::ShareOut(NoteLines* above, NoteLines* below) {
    if (open_ && below != nullptr) gap_.back().TouchesBelow = true;
    if (above == nullptr) {
        ShareOutAboveFirst(below);
    } else {
        if (!candidate_.empty()) ShareOutCandidate(*above, below != nullptr);
        for (Paragraph& paragraph : gap_) {
            const bool one = paragraph.TouchesAbove != paragraph.TouchesBelow;
            const bool up = below == nullptr || (one ? paragraph.TouchesAbove : !textAbove_);
            Append(up ? *above : *below, std::move(paragraph.Lines));
        }
    }
    gap_.clear();
    size_ = 0;
}

}  // namespace kavit
