#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "app/model/board_marks.h"
#include "app/model/replay_look.h"
#include "app/model/window_state.h"
#include "level/board.h"

// All that the window shows, as one value. The model changes it and the view draws it; nothing is
// ever read back from a widget. Texts are UTF-8 and are shown as written, never as markup.
namespace kavit {

// What a cell can look like.
enum class Picture : std::uint8_t {
    Floor,
    Goal,
    Box,
    BoxOnGoal,
    Wall,
    ManOnGoal,
    ManLeft,  // the four men stand in the order of Dir
    ManDown,
    ManRight,
    ManUp,
    Outside,  // beyond the walls: the window's ground, and no picture
};
inline constexpr int kPictures = 10;
inline constexpr int kNoTool = -1;
inline constexpr int kTools = 10;

// The picture of a cell code or of a tool of the palette. A man who does not walk looks at the
// user; the three further tools are men who look to the other sides.
[[nodiscard]] constexpr Picture PictureOf(int code) {
    constexpr std::array<Picture, kTools> pictures = {
        Picture::Floor, Picture::Goal,     Picture::Box,     Picture::BoxOnGoal,
        Picture::Wall,  Picture::ManDown,  Picture::ManLeft, Picture::ManRight,
        Picture::ManUp, Picture::ManOnGoal};
    return code >= 0 && code < kTools ? pictures[static_cast<std::size_t>(code)] : Picture::Floor;
}

// The man after a step in a direction of Dir; he looks at the user before the first.
[[nodiscard]] constexpr Picture PictureOfMan(int direction) {
    return direction < 0 ? Picture::ManDown
                         : static_cast<Picture>(static_cast<int>(Picture::ManLeft) + direction);
}

// What stands in the fields of the settings panel.
struct PanelFields {
    std::string Memory;
    std::string Blocks;
    std::string Time;

    bool operator==(const PanelFields&) const = default;
};

// A level of the list.
struct ListRow {
    std::string Title;
    std::string BoardText;
    std::string Mark;
};

struct Screen {
    std::string Title;

    // What the text box, the editor's buttons and the clocks go by.
    State Phase = State::Empty;
    Buttons Keys{};  // btnSOLVE, btnANIM, btnCLEAR

    // Status lines and labels.
    std::string Left;
    std::string Right;
    std::string Timer;
    std::string Side;
    std::string Debug;
    std::string Details;  // of a search that runs
    std::string Size;
    std::string Optimizer;
    bool OptimizerUnderlined = false;
    std::int64_t ProgressMost = 0;
    std::int64_t Progress = 0;

    std::array<Picture, kCells> Cells{};
    BoardMarks Marks;
    bool ShowDead = false;
    bool ShowReach = false;
    ReplayLook Replay;

    std::string BoxText;  // over the board

    bool AsideOn = false;  // what is drawn is solved beside the drawing
    std::string Aside;     // and what came of it
    int Tool = kNoTool;
    int Shape = 0;  // of DrawShape

    bool PanelVisible = false;
    PanelFields Panel;
    std::string PanelMemory;  // what the sizes in the fields would take
    bool WriteSol = false;
    bool NoWriteSol = false;

    // The list of levels, made anew when it changes; none for a single level.
    std::shared_ptr<const std::vector<ListRow>> List = std::make_shared<std::vector<ListRow>>();
    int ListChosen = -1;
    bool ListVisible = false;
    bool SolvingAll = false;

    // The checked entries of the menus, and whether the hidden ones are there.
    int SeaType = 0;
    int OptLevel = 0;
    int HashCase = 0;
    bool OptSpecial = false;
    bool ExpertMenus = false;

    // What the last search took, and its positions by layer.
    std::string Closing;
    std::vector<std::int64_t> ForwLayers;
    std::vector<std::int64_t> BackLayers;
};

}  // namespace kavit
