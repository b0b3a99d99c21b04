#pragma once

#include <QPalette>
#include <functional>

class QWidget;

namespace kavit {

// Light or dark, by the system or chosen. The board takes its drawings from the palette in force.
enum class Theme { System, Light, Dark };

// For the whole program.
void ApplyTheme(Theme theme);
[[nodiscard]] QPalette PaletteOf(Theme theme);
// Draws what a widget keeps ready, now and whenever its palette changes.
void DrawThemed(QWidget* widget, const std::function<void()>& draw);
// Dark ground under light text.
[[nodiscard]] bool IsDark(const QPalette& palette);

}  // namespace kavit
