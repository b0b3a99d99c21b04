#include "app/model/window_state.h"

#include <algorithm>
#include <iterator>

namespace kavit {
namespace {

using States = std::uint32_t;

template <typename... S>
constexpr States In(S... states) {
    return ((States{1} << static_cast<unsigned>(states)) | ...);
}
constexpr bool Holds(States states, State state) {
    return (states & In(state)) != 0;
}

using enum State;
using enum Event;

constexpr States kAny = ~States{0};
constexpr States kStill = In(Solved, Paused, Replayed);  // a solution, and the board in sight
constexpr States kDrawing = In(Editing, EditingBlank);
constexpr States kBusy = In(Checking, Solving);

struct Transition {
    States From;
    Event By;
    State To;
};

// The first row that fits.
constexpr Transition kTransitions[] = {
    {kAny, LevelRead, Ready},
    {In(Empty), LevelFailed, Empty},
    {In(Blank), LevelFailed, Blank},
    {kAny, LevelFailed, Ready},
    {kAny, Restarted, Ready},
    {kDrawing, Cleared, EditingBlank},
    {kAny, Cleared, Blank},

    {In(Empty, Blank), OptionChanged, Blank},
    {In(Ready, OutOfMemory, ShowingText, Importing) | kStill, OptionChanged, Ready},

    {In(Ready, Blank, Replaying, Halting) | kStill, SolveAsked, Checking},
    {In(Checking), SearchBegun, Solving},
    {kBusy, CheckFailed, Ready},
    {kBusy, EndedWithout, Ready},
    {kBusy, MemoryRanOut, OutOfMemory},
    {In(OutOfMemory), MemoryLeft, Ready},
    {In(Ready) | kBusy, SolutionFound, Solved},

    {kStill, TextAsked, ShowingText},
    {In(ShowingText) | kStill, SetAside, Solved},
    // SetAside takes the import box away from what it lies over: see Fire.
    {kAny, ImportOpened, Importing},
    {In(Importing), ImportTaken, Ready},

    {kAny, EditOpened, Editing},
    {In(EditingBlank), EditUndone, Editing},
    {kDrawing, EditClosed, Ready},

    {kStill, PlayStarted, Replaying},
    {In(Replaying), HaltAsked, Halting},
    {In(Halting), PlayHalted, Paused},
    {In(Replaying), PlayDone, Replayed},
    {kStill, PlayDone, Replayed},
    {kStill, SoughtStart, Solved},
    {kStill, Sought, Paused},
};

struct Refusal {
    Need Kind;
    States Busy;
    const char* Text;
};

constexpr const char* kRunning = "Solver is running";
constexpr const char* kAnimation = "Stop Animation first";

constexpr Refusal kRefusals[] = {
    {Need::Change, kBusy, "Can't change; Solver is running"},
    {Need::Levels, kBusy, kRunning},
    {Need::Edit, kBusy, kRunning},
    {Need::Hash, kBusy, kRunning},
    {Need::Exit, kBusy, kRunning},
    {Need::Levels, In(Replaying, Halting), kAnimation},
    {Need::Edit, In(Replaying, Halting), kAnimation},
    {Need::Hash, In(Replaying, Halting), kAnimation},
    {Need::Edit, In(ShowingText, Importing), "You are seeing TEXT"},
    {Need::Levels, kDrawing, "You are editing"},
};

struct Look {
    State Of;
    Buttons What;
};

constexpr Look kLooks[] = {
    {Empty, {"SOLVE", false, "ANIM", false, false}},
    {Blank, {"SOLVE", true, "ANIM", false, false}},
    {Ready, {"SOLVE", true, "ANIM", false, true}},
    {Checking, {"SOLVE", true, "ANIM", false, true}},
    {Solving, {"STOP", true, "ANIM", false, false}},
    {OutOfMemory, {"STOP", true, "ANIM", false, false}},
    {Solved, {"TEXT", true, "ANIM", true, true}},
    {Replaying, {"TEXT", true, "STOP", true, true}},
    {Halting, {"TEXT", true, "STOP", true, true}},
    {Paused, {"TEXT", true, "CONT< >REPEAT", true, true}},
    {Replayed, {"TEXT", true, "REPEAT", true, true}},
    {ShowingText, {"RETURN", true, "ANIM", false, true}},
    {Importing, {"RETURN", true, "ANIM", false, true}},
    {Editing, {"SOLVE", false, "DONE", true, true}},
    {EditingBlank, {"SOLVE", true, "DONE", true, true}},
};

}  // namespace

void StateMachine::Fire(Event event) {
    if (event == SetAside && now_ == Importing) {
        now_ = below_ == Empty ? Blank : below_;  // RETURN enabled SOLVE
        return;
    }
    const auto* const row =
        std::find_if(std::begin(kTransitions), std::end(kTransitions),
                     [&](const Transition& t) { return t.By == event && Holds(t.From, now_); });
    if (row == std::end(kTransitions)) return;
    if (now_ != Importing) below_ = now_;
    now_ = row->To;
}

Buttons ButtonsOf(const StateMachine& machine) {
    Buttons buttons = std::find_if(std::begin(kLooks), std::end(kLooks), [&](const Look& look) {
                          return look.Of == machine.Now();
                      })->What;
    if (machine.Now() == Importing) {  // CLEAR stays as it was
        buttons.ClearOn =
            machine.Below() != Empty && machine.Below() != Blank && machine.Below() != OutOfMemory;
    }
    return buttons;
}

const char* RefusalOf(State state, Need need) {
    for (const Refusal& row : kRefusals) {
        if (row.Kind == need && Holds(row.Busy, state)) return row.Text;
    }
    return nullptr;
}

}  // namespace kavit
