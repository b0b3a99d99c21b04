#include "app/help_languages.h"

namespace kavit {

std::string_view EnglishHelp() {
    return R"(KAVIT20

Kavit solves Sokoban levels. The man walks over free squares and pushes boxes, one at a time; he
never pulls. The level is solved when every box stands on a goal. The solution that Kavit looks for
has the fewest pushes possible; the number of the man's moves is kept low, but it is not always the
lowest.


THREE WAYS TO ENTER A LEVEL

- Read a file: File / Open File takes a level file (".xsb", one level a file). You can also drop
the file on the window. Next Level and Previous Level go through the other levels of the same
folder.

- Import: File / Import opens a text area. Paste the text of a level there, or type it, and press
RETURN. When the clipboard holds a level, Ctrl+V on the board takes it in one go.

- Draw it: File / Edit Board. Choose one of the figures at the right of the board and click on the
squares; floor, goals, boxes and walls can also be painted by dragging. The buttons beside them
move the whole level, centre it, mirror it and turn it. DONE ends the drawing and keeps it; Escape
brings back the board as it was before; CLEAR empties it.


THE CHARACTERS OF A LEVEL

Each line of the text is a row and each character a square:

    ' '  floor
    '.'  goal
    '@'  the man
    '$'  box
    '*'  box on a goal
    '+'  the man on a goal
    '#'  wall

A level needs closed walls, one man, and as many boxes as goals. It can be up to 17 rows high and
19 columns wide. A line that begins with any other character, such as a title, is skipped.


SOLVING

- SOLVE starts the search. The clock shows the seconds spent and the limit, and the bar how full
the memory is.

- STOP, on the same button, ends the search. If a solution is already known, you keep it.

- When there is a solution, the status line tells its moves and pushes: 230/97 is 230 moves, 97 of
them pushes. When a second pair follows, the first solution has fewer moves and the second fewer
pushes. The program then asks where to write the solution file (".sol"); you may cancel.

- TEXT shows the level and the solution as text. The letters l, d, r, u are steps to the left,
down, right and up; capitals are pushes. Select and copy what you want with Ctrl+C. The first
solution is already on the clipboard, to be pasted into another program. RETURN goes back to the
board.

- ANIM replays the first solution on the board. Press STOP to halt it. On "CONT< >REPEAT" the left
mouse button goes on from there, and the right one starts again from the beginning. At the end,
REPEAT shows it once more.


SETTINGS (Configure)

- Max Positions: how many positions the search can remember. Hard levels need more; the memory is
taken at once, about 100 MB for 4000000 positions with 8 blocks.

- Blocks: the largest number of boxes that a level may have. Raising it makes each position larger.

- Max Time: the seconds after which a search is stopped.

- "Write solution Unconditionally" writes the solution file without asking, in the current folder,
under the name of the level. "Don't Write solution" never writes it. With neither you are asked.

APPLY puts the new sizes into force and CANCEL forgets them. File / Save Configuration keeps the
settings for the next time, in the file Kavit.ini of the current folder.


OPTIMIZER

It decides how much work goes into saving moves of the man; the letter beside the board shows it.

- None (0), letter N: the first solution found will do.

- Something (1), letter S: compares all the solutions that the search meets. This is the usual one.

- Something more (2), letter M: after the search, goes once more over the stored positions looking
for fewer moves, also with up to two pushes more.

- Something plus (3), letter P: more thorough still, and slower. It ends with a proof that no solution
with the fewest pushes has fewer moves, when time and memory allow one.

Special, with the levels 2 and 3, follows more of the ways in which the two halves of a solution
can meet. None, Something plus and Special belong to the expert menus, which are hidden at first.


WHAT THE MESSAGES MEAN

- "There is no solution !": all possibilities were tried; the level cannot be solved.

- "Out of memory before a solution": the search has used up Max Positions. Raise it in Configure,
go back with File / Restart and solve again.

- "Out of memory but there is a solution": memory ran out while saving moves; the solution is good.

- "Time Out" and "Interrupted by user !": the limit was reached, or you pressed STOP.

- "Strange mapping ???": boxes and goals differ in number, there is not exactly one man, or the
walls are open.

- "This program is limited to  8 boxes": raise Blocks in Configure.

- "There is, at least, one frozen block": a box off its goal can never be moved again.

- "Problem already solved": every box stands on a goal from the start.

- "Insuficient Memory": the computer cannot give that much; choose fewer positions or blocks.


KEYS

    Ctrl+O: open a level file
    Ctrl+PgDown: next level
    Ctrl+PgUp: previous level
    Ctrl+R: restart the level
    F5: SOLVE, STOP, TEXT, RETURN
    F6: ANIM and what it turns into
    Shift+F6: begin the replay again
    Escape: stop; leave what is open
    Ctrl+C: copy the solution
    Ctrl+Shift+C: copy the level as text
    Ctrl+V: paste a level
    Ctrl+E: edit the board
    Ctrl+I: import
    Ctrl+S: save the configuration
    F1: this help
    Ctrl+Q: quit
)";
}

}  // namespace kavit
