#include "cli/read_level.h"

#include <sstream>
#include <string>
#include <utility>

#include "cli/complain.h"
#include "level/shown_text.h"

namespace kavit {

namespace {

std::string PlaceText(const TextPlace& place) {
    if (place.Line == 0) return "";
    return "line " + std::to_string(place.Line) + ", column " + std::to_string(place.Column);
}

// Answers for the user, who was asked before by --strict, and tells of what was taken as a space.
// A file that is no level at all has hundreds of such characters; the first one says enough.
class InvalidChars {
  public:
    InvalidChars(std::string level, bool strict) : level_(std::move(level)), strict_(strict) {}
    ~InvalidChars() {
        if (count_ > 1) Complain(level_, std::to_string(count_ - 1) + " more of that kind");
    }
    InvalidChars(const InvalidChars&) = delete;
    InvalidChars& operator=(const InvalidChars&) = delete;

    InvalidCharAnswer Ask(const InvalidChar& invalid) {
        question_ = InvalidCharText(invalid.Character);
        if (strict_) return InvalidCharAnswer::Cancel;
        if (++count_ == 1) Complain(level_, PlaceText(invalid.Place) + ": " + question_);
        return InvalidCharAnswer::Space;
    }
    // What is wrong, without what would have been done about it.
    [[nodiscard]] std::string Question() const { return question_.substr(0, question_.find(';')); }

  private:
    std::string level_;
    bool strict_;
    int count_ = 0;
    std::string question_;
};

ReadReply ReadFrom(const LevelEntry& entry, Board& board, const AskInvalidChar& ask) {
    if (entry.Code != Result::Ok)
        return {.Code = entry.Code, .Cancelled = false, .Place = {}, .Reason = entry.Reason};
    if (!entry.FromCollection && !entry.FromStandardInput)
        return ReadLevelFile(entry.File, board, ask);
    std::istringstream text(entry.FromCollection ? entry.Level.BoardText : entry.Text);
    return ReadLevelStream(text, board, ask);
}

// A title may hold a "#", but the line may also be a row of the level with a typing error in front.
void TellOfDroppedRows(const std::string& level, const ReadReply& reply) {
    for (const std::int64_t line : reply.DroppedLines) {
        Complain(level, "line " + std::to_string(line) + " has a '#' but is no row; left out");
    }
    const auto more = reply.Dropped - static_cast<std::int64_t>(reply.DroppedLines.size());
    if (more > 0) Complain(level, std::to_string(more) + " more of that kind");
}

}  // namespace

ReadReply ReadLevel(const LevelEntry& entry, bool strict, Board& board) {
    const std::string name = ShownText(entry.Name);
    InvalidChars invalid(name, strict);
    ReadReply reply =
        ReadFrom(entry, board, [&](const InvalidChar& met) { return invalid.Ask(met); });
    TellOfDroppedRows(name, reply);
    if (reply.Loaded()) return reply;
    if (reply.Cancelled) {
        // The catalogue has no words for it: the window ends the whole program here.
        reply.Code = Result::CantOpen;
        reply.Reason = invalid.Question();
    }
    const std::string place = PlaceText(reply.Place);
    if (!place.empty()) reply.Reason += (reply.Reason.empty() ? "" : ", ") + place;
    return reply;
}

}  // namespace kavit
