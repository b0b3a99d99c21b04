#pragma once

#include <array>
#include <cstdint>

#include "level/board.h"
#include "output/animation.h"

namespace kavit {

inline constexpr int kPictures = 10;

// The picture of a cell code. A man that does not walk looks at the user; the three further man
// codes of the editor look to the other sides.
[[nodiscard]] constexpr Picture PictureOf(std::uint8_t code) {
    constexpr std::array<Picture, 10> pictures = {
        Picture::Floor, Picture::Goal,     Picture::Box,     Picture::BoxOnGoal,
        Picture::Wall,  Picture::ManDown,  Picture::ManLeft, Picture::ManRight,
        Picture::ManUp, Picture::ManOnGoal};
    return code < pictures.size() ? pictures[code] : Picture::Floor;
}

}  // namespace kavit
