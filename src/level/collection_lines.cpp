#include "level/collection_lines.h"

#include <algorithm>
#include <utility>

#include "level/moves_text.h"
#include "level/without_case.h"

namespace kavit {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t";
constexpr std::size_t kMostSquares = 4096;  // of one line, and far more than a level has

// What a character can be in a row.
enum class Sign : std::uint8_t { None, Blank, Floor, Plain, Wall, Letter, Digit, Bar };

constexpr std::array<Sign, 256> kSigns = [] {
    std::array<Sign, 256> signs{};
    const auto set = [&signs](std::string_view characters, Sign sign) {
        for (const char c : characters) signs[static_cast<unsigned char>(c)] = sign;
    };
    set(" ", Sign::Blank);
    set("-_", Sign::Floor);
    set(".$*@+", Sign::Plain);
    set("#", Sign::Wall);
    set("pPmMbBo", Sign::Letter);
    set("0123456789", Sign::Digit);
    set("|", Sign::Bar);
    return signs;
}();

Sign SignOf(char c) {
    return kSigns[static_cast<unsigned char>(c)];
}

char PlainSquare(char c) {
    switch (c) {
        case '-':
        case '_':
            return ' ';
        case 'p':
        case 'm':
            return '@';
        case 'P':
        case 'M':
            return '+';
        case 'b':
            return '$';
        case 'B':
            return '*';
        case 'o':
            return '.';
        default:
            return c;
    }
}

// A count stands before what it counts, and a row with counts has no blanks. Letters that are
// squares make words, too: a row of them begins with its wall.
bool IsRow(std::string_view line) {
    bool letters = false;
    bool counts = false;
    bool blanks = false;
    Sign first = Sign::Blank;
    bool count = false;  // the last character belongs to one
    for (const char c : line) {
        const Sign sign = SignOf(c);
        if (sign == Sign::None || (count && sign == Sign::Bar)) return false;
        count = sign == Sign::Digit;
        counts = counts || count;
        if (count) continue;
        blanks = blanks || sign == Sign::Blank;
        letters = letters || sign == Sign::Letter;
        if (first == Sign::Blank && sign != Sign::Floor) first = sign;
    }
    return !count && (!letters || first == Sign::Wall) && !(counts && blanks);
}

// Blanks and "-" say nothing: they stand around titles, too.
bool IsMostlyRow(std::string_view line) {
    std::size_t all = 0;
    std::size_t squares = 0;
    for (const char c : line) {
        const Sign sign = SignOf(c);
        if (sign == Sign::Blank || sign == Sign::Floor) continue;
        ++all;
        if (sign == Sign::Plain || sign == Sign::Wall) ++squares;
    }
    return squares * 2 > all;
}

}  // namespace

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = std::min(text.find_first_not_of(kBlanks), text.size());
    return text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

CollectionLines::CollectionLines(std::istream& stream) : stream_(stream) {
    if (Fill() && std::string_view(buffer_.data(), end_).substr(0, 3) == kByteOrderMark) {
        begin_ = kByteOrderMark.size();
    }
}

bool CollectionLines::Fill() {
    stream_.read(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    begin_ = 0;
    end_ = static_cast<std::size_t>(stream_.gcount());
    return end_ > 0;
}

bool CollectionLines::Read(CollectionLine& line) {
    if (begin_ == end_ && !Fill()) return false;
    line = {.Number = ++number_};
    for (;;) {
        const std::string_view rest(buffer_.data() + begin_, end_ - begin_);
        const std::size_t length = std::min(rest.find_first_of("\r\n"), rest.size());
        const std::size_t room = kLongestLine - line.Text.size();
        line.Text += rest.substr(0, std::min(length, room));
        line.Cut = line.Cut || length > room;
        begin_ += length;
        if (length < rest.size()) break;
        if (!Fill()) break;
    }
    if (begin_ < end_) {
        const bool cr = buffer_[begin_++] == '\r';
        if (cr && (begin_ < end_ || Fill()) && buffer_[begin_] == '\n') ++begin_;
    }
    line.Text.resize(line.Text.find_last_not_of(kBlanks) + 1);
    return true;
}

bool CollectionLines::Take(CollectionLine& line) {
    if (ahead_.empty()) return Read(line);
    line = std::move(ahead_.front());
    ahead_.pop_front();
    return true;
}

const CollectionLine* CollectionLines::Peek(std::size_t ahead) {
    while (ahead_.size() <= ahead) {
        CollectionLine line;
        if (!Read(line)) return nullptr;
        ahead_.push_back(std::move(line));
    }
    return &ahead_[ahead];
}

LineKind KindOf(std::string_view line) {
    const std::string_view text = Trimmed(line);
    if (text.empty()) return LineKind::Empty;
    if (text.find('#') != std::string_view::npos) {
        if (IsRow(line)) return LineKind::Row;
        const bool note = text[0] == ';' || LabelOf(text).Label != LineLabel::None;
        return !note && IsMostlyRow(line) ? LineKind::Broken : LineKind::Text;
    }
    if (LooksLikeMoves(text)) return LineKind::Moves;
    const bool squares = std::all_of(line.begin(), line.end(), [](char c) {
        return SignOf(c) == Sign::Blank || SignOf(c) == Sign::Plain;
    });
    return squares ? LineKind::Squares : LineKind::Text;
}

std::size_t BrokenAt(std::string_view line) {
    const auto* const at =
        std::find_if(line.begin(), line.end(), [](char c) { return SignOf(c) == Sign::None; });
    return static_cast<std::size_t>(at - line.begin()) + 1;
}

RowsOfLine RowsOf(std::string_view line) {
    RowsOfLine result{{""}, false};
    std::size_t squares = 0;
    std::size_t count = 0;
    bool counted = false;
    for (const char c : line) {
        const Sign sign = SignOf(c);
        result.OtherAlphabet = result.OtherAlphabet || sign >= Sign::Letter;
        if (sign == Sign::Digit) {
            const std::size_t next = count * 10 + static_cast<std::size_t>(c - '0');
            count = std::min(next, kLongestLine);  // more than any row has
            counted = true;
            continue;
        }
        const std::size_t times = counted ? count : 1;
        squares += std::max<std::size_t>(times, 1);
        if (squares > kMostSquares) return {{}, result.OtherAlphabet};
        if (sign == Sign::Bar) {
            result.Rows.emplace_back();
        } else {
            result.Rows.back().append(times, PlainSquare(c));
        }
        count = 0;
        counted = false;
    }
    return result;
}

LabelledText LabelOf(std::string_view line) {
    static constexpr std::pair<std::string_view, LineLabel> kLabels[] = {
        {"title:", LineLabel::Title},           {"author:", LineLabel::Author},
        {"collection:", LineLabel::Collection}, {"comment:", LineLabel::Comment},
        {"comment-end", LineLabel::CommentEnd}, {"comment_end", LineLabel::CommentEnd},
    };
    const std::string_view text = Trimmed(line);
    for (const auto& [name, label] : kLabels) {
        if (!EqualWithoutCase(text.substr(0, name.size()), name)) continue;
        std::string_view behind = text.substr(name.size());
        if (label == LineLabel::CommentEnd && !behind.empty()) {
            if (behind[0] != ':') continue;
            behind.remove_prefix(1);
        }
        return {label, Trimmed(behind)};
    }
    // "Solution", "Solution 2:", "Solution (12 pushes): rRuU"; but no sentence about solutions.
    constexpr std::string_view solution = "solution";
    if (!EqualWithoutCase(text.substr(0, solution.size()), solution)) return {};
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos && text.size() > solution.size()) return {};
    const std::string_view moves =
        Trimmed(text.substr(colon == std::string_view::npos ? text.size() : colon + 1));
    if (!moves.empty() && !LooksLikeMoves(moves)) return {};
    return {LineLabel::Solution, moves};
}

}  // namespace kavit
