#pragma once

#include <string_view>

// What coverage-guided fuzzing calls with any bytes: the readers of everything that comes from
// outside. Each throws std::logic_error when something that must hold does not.

namespace kavit::test {

// ReadLevelStream: whole and in pieces, with both answers to an invalid character. A level that was
// read prints as text that reads as the same level, and can be handed to the solver.
void FuzzLevelFile(std::string_view bytes);

// ImportLevelText, the same; and the board stays as it is when the text is refused.
void FuzzPastedText(std::string_view bytes);

// CollectionReader: whole and in pieces. Every level can be read by itself, by either single-level
// reader, and what is written reads as the same.
void FuzzCollection(std::string_view bytes);

// ParseSettings: settings that were read are written as text that reads as the same settings, and a
// fault is one line that can be shown.
void FuzzSettingsFile(std::string_view bytes);

}  // namespace kavit::test
