#include "level/moves_text.h"
#include "level/digit.h"

#include <algorithm>

namespace kavit {

namespace {

constexpr std::string_view kLetters = "lurdLURD";
constexpr int kDeepest = 20;  // groups within groups

class Expansion {
  public:
    explicit Expansion(std::string_view text) : rest_(text) {}

    // Takes letters and groups up to the end, or to the parenthesis that closes this group.
    bool TakeGroup(std::string& moves, int depth) {
        while (!rest_.empty() && rest_.front() != ')') {
            std::size_t times = 1;
            if (IsDigit(rest_.front()) && !TakeCount(times)) return false;
            const std::size_t begin = moves.size();
            if (!TakeOne(moves, depth)) return false;
            const std::string once = moves.substr(begin);
            if (begin + once.size() * times > kMostMoves) return false;
            moves.resize(begin);
            for (std::size_t i = 0; i < times && !once.empty(); ++i) moves += once;
        }
        return true;
    }
    [[nodiscard]] bool AtEnd() const { return rest_.empty(); }

  private:
    bool TakeCount(std::size_t& times) {
        times = 0;
        for (; !rest_.empty() && IsDigit(rest_.front()); rest_.remove_prefix(1)) {
            times = times * 10 + static_cast<std::size_t>(rest_.front() - '0');
            if (times > kMostMoves) return false;
        }
        return true;
    }
    bool TakeOne(std::string& moves, int depth) {
        if (rest_.empty()) return false;
        const char c = rest_.front();
        rest_.remove_prefix(1);
        if (c != '(') {
            moves += c;
            return kLetters.find(c) != std::string_view::npos;
        }
        if (depth == kDeepest || !TakeGroup(moves, depth + 1) || rest_.empty()) return false;
        rest_.remove_prefix(1);
        return true;
    }

    std::string_view rest_;
};

}  // namespace

bool LooksLikeMoves(std::string_view text) {
    return text.find_first_of(kLetters) != std::string_view::npos &&
           std::all_of(text.begin(), text.end(), [](char c) {
               return IsDigit(c) || c == '(' || c == ')' ||
                      kLetters.find(c) != std::string_view::npos;
           });
}

std::optional<std::string> ExpandMoves(std::string_view text) {
    std::string moves;
    Expansion expansion(text);
    if (!expansion.TakeGroup(moves, 0) || !expansion.AtEnd()) return std::nullopt;
    return moves;
}

}  // namespace kavit
