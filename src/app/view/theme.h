#pragma once

#include <QPalette>

namespace kavit {

// Light or dark, by the system or chosen. The board takes its drawings from the palette in force.
enum class Theme { System, Light, Dark };

// For the whole program.
void ApplyTheme(Theme theme);
[[nodiscard]] QPalette PaletteOf(Theme theme);
// Dark ground under light text.
[[nodiscard]] bool IsDark(const QPalette& palette);

}  // namespace kavit
