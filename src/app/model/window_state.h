#pragma once

#include <cstdint>

// What the window is busy with, as one value. The captions of the three command buttons, what is
// enabled and which commands are refused follow from it alone.
//
// The transitions are a table in window_state.cpp: from where, by what, to where. An event that has
// no row for the current state changes nothing.
namespace kavit {

enum class State : std::uint8_t {
    Empty,         // nothing was opened yet
    Blank,         // the board is empty, and may be solved all the same
    Ready,         // a level that can be solved
    Checking,      // SOLVE was pressed, and the board may still be refused
    Solving,       // from the first sign of the search to the report
    OutOfMemory,   // the search filled the store; nothing runs
    Solved,        // a solution is there
    Replaying,     // it is played on the board
    Halting,       // STOP was pressed; the next tick ends the replay
    Paused,        // the replay stands
    Replayed,      // it came to its end
    ShowingText,   // the solution's text lies over the board
    Importing,     // the box for a level's text lies over the board
    Editing,       // the board is drawn on
    EditingBlank,  // as Editing, after CLEAR: SOLVE works
};

enum class Event : std::uint8_t {
    LevelRead,
    LevelFailed,
    Restarted,
    OptionChanged,  // a solution of before no longer counts
    Cleared,
    // A solve.
    SolveAsked,
    SearchBegun,
    CheckFailed,  // the board was refused
    EndedWithout,
    MemoryRanOut,
    MemoryLeft,  // STOP or new sizes after it
    SolutionFound,
    // What lies over the board.
    TextAsked,
    ImportOpened,
    ImportTaken,
    SetAside,  // text, import box and replay make room for the board
    // The editor.
    EditOpened,
    EditUndone,
    EditClosed,
    // The replay.
    PlayStarted,
    HaltAsked,
    PlayHalted,
    PlayDone,
    // It was put to a place by hand: the start, or one within.
    SoughtStart,
    Sought,
};

class StateMachine {
  public:
    [[nodiscard]] State Now() const { return now_; }
    void Fire(Event event);

    // What the import box lies over.
    [[nodiscard]] State Below() const { return below_; }

  private:
    State now_ = State::Empty;
    State below_ = State::Empty;
};

// Another thread is at work for the board in sight.
[[nodiscard]] constexpr bool IsSolving(State state) {
    return state == State::Checking || state == State::Solving;
}
[[nodiscard]] constexpr bool IsEditing(State state) {
    return state == State::Editing || state == State::EditingBlank;
}
[[nodiscard]] constexpr bool IsPlaying(State state) {
    return state == State::Replaying || state == State::Halting;
}
// A solution is there, and the board in sight.
[[nodiscard]] constexpr bool ShowsSolution(State state) {
    return IsPlaying(state) || state == State::Solved || state == State::Paused ||
           state == State::Replayed;
}
[[nodiscard]] constexpr bool HasBox(State state) {
    return state == State::ShowingText || state == State::Importing;
}

// Captions, and what is enabled.
struct Buttons {
    const char* Solve;
    bool SolveOn;
    const char* Anim;
    bool AnimOn;
    bool ClearOn;
};
[[nodiscard]] Buttons ButtonsOf(const StateMachine& machine);

// Kinds of commands by what they need of the window.
enum class Need : std::uint8_t { Levels, Edit, Hash, Change, Exit };
// The sentence with which a command is refused; nullptr when it may go on.
[[nodiscard]] const char* RefusalOf(State state, Need need);

}  // namespace kavit
