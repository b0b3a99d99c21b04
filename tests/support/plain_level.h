#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "level/board.h"
#include "level/result.h"

namespace kavit::test {

// A small reader of level text for tests, apart from the program's own: the text is cropped at the
// rectangle of its walls. Unknown characters count as floor. Ok, TooWide or TooHigh.
Result ReadPlainLevel(std::string_view text, Board& board);

// The board of rows that a test wrote down; throws when they do not fit.
Board PlainLevel(std::initializer_list<std::string_view> rows);

// Sets the wall extent and ManPos from the cells, as after reading a level.
void SetExtent(Board& board);

// Reads a whole file; nothing when it cannot be read.
std::optional<std::string> ReadWholeFile(const std::string& path);

// The folder of test levels: from the environment (KAVIT_LEVELS) or beside the source folder.
std::string LevelsFolder();

}  // namespace kavit::test
