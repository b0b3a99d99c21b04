#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "level/board.h"
#include "solver/solver.h"

// The replay of solution 0, one move per tick, without a window: the button's captions, the counts,
// and for each move the cells to repaint. The board itself never changes; a start asks for it to be
// drawn anew.
namespace kavit {

inline constexpr int kAnimTickMs = 250;
inline constexpr int kLeftButton = 1;

// What a cell can look like. The four men stand in the order of Dir.
enum class Picture : std::uint8_t {
    Floor,
    Goal,
    Box,
    BoxOnGoal,
    Wall,
    ManOnGoal,
    ManLeft,
    ManDown,
    ManRight,
    ManUp,
};

// The caption of the button is its state. Done belongs to the editor.
enum class AnimCaption : std::uint8_t { Anim, Stop, Cont, Repeat, Done };
[[nodiscard]] std::string_view CaptionText(AnimCaption caption);

struct CellPaint {
    int Cell = 0;
    Picture What = Picture::Floor;

    bool operator==(const CellPaint&) const = default;
};

// What the window has to do after a click or a tick, beside taking over caption and timer.
struct AnimOrders {
    bool RedrawBoard = false;        // as the level stands at the start
    std::vector<CellPaint> Repaint;  // three at most
    bool ShowCounts = false;         // message 6
    std::string RightLine;           // for the right status line, "" to leave it
    std::string Warning;             // for a message box, "" for none
};

class Animation {
  public:
    // The button was released. `solution` is solution 0, `seaPhase` that of the solver.
    AnimOrders MouseUp(int button, const Board& board, const KeptSolution& solution, int seaPhase);
    // The timer ticked.
    AnimOrders Tick();
    // The command flow and the editor set the caption; a replay that runs ends there.
    void SetCaption(AnimCaption caption);

    [[nodiscard]] AnimCaption Caption() const { return caption_; }
    // The timer is on exactly while this is true.
    [[nodiscard]] bool AnimRunning() const { return running_; }
    [[nodiscard]] int AnimMoves() const { return moves_; }
    [[nodiscard]] int AnimPushes() const { return pushes_; }
    [[nodiscard]] int AnimManPos() const { return manPos_; }

  private:
    AnimOrders Begin(const Board& board, const KeptSolution& solution, int seaPhase);
    AnimOrders AnimStep(int k);
    void Run(bool on, AnimCaption caption);
    [[nodiscard]] bool IsGoal(int cell) const;

    AnimCaption caption_ = AnimCaption::Anim;
    bool running_ = false;
    bool stop_ = false;
    int moves_ = 0;
    int pushes_ = 0;
    int manPos_ = 0;
    Board board_;           // at the start; tells the goals
    std::string solution_;  // its letters
    int solMoves_ = 0;
};

}  // namespace kavit
