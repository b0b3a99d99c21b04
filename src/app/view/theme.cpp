#include "app/view/theme.h"

#include <QApplication>
#include <QEvent>
#include <QStyle>
#include <QWidget>

namespace kavit {
namespace {

struct Colours {
    const char* Window;
    const char* Base;
    const char* Button;
    const char* Text;
    const char* Faint;  // of what is disabled, and of hints in empty fields
    const char* Link;
    const char* Highlight;
    const char* HighlightedText;
};

// Text on each of its grounds has a contrast of 4.5:1 and more, what is disabled included.
constexpr Colours kLight = {"#f0f1f3", "#ffffff", "#e3e6ea", "#15181c",
                            "#5a616b", "#0b5cad", "#1d5fb4", "#ffffff"};
constexpr Colours kDark = {"#1b1f24", "#14171b", "#2a3038", "#e8eaed",
                           "#a3abb6", "#7fb8ff", "#7fb8ff", "#0b0d10"};

void PutFaint(QPalette& palette, const Colours& colours) {
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(colours.Faint));
}

class PaletteWatch : public QObject {
  public:
    PaletteWatch(QObject* widget, std::function<void()> draw)
        : QObject(widget), draw_(std::move(draw)) {}

    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == QEvent::PaletteChange) draw_();
        return false;
    }

  private:
    std::function<void()> draw_;
};

}  // namespace

void DrawThemed(QWidget* widget, const std::function<void()>& draw) {
    draw();
    widget->installEventFilter(new PaletteWatch(widget, draw));
}

QPalette PaletteOf(Theme theme) {
    if (theme == Theme::System) return QApplication::style()->standardPalette();
    const Colours& c = theme == Theme::Dark ? kDark : kLight;
    QPalette palette(QColor(c.Button), QColor(c.Window));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::ToolTipText, QPalette::BrightText})
        palette.setColor(role, QColor(c.Text));
    palette.setColor(QPalette::Base, QColor(c.Base));
    palette.setColor(QPalette::AlternateBase, QColor(c.Window));
    palette.setColor(QPalette::ToolTipBase, QColor(c.Base));
    palette.setColor(QPalette::PlaceholderText, QColor(c.Faint));
    palette.setColor(QPalette::Link, QColor(c.Link));
    palette.setColor(QPalette::Highlight, QColor(c.Highlight));
    palette.setColor(QPalette::HighlightedText, QColor(c.HighlightedText));
    PutFaint(palette, c);
    return palette;
}

bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < 128;
}

void ApplyTheme(Theme theme) {
    if (theme != Theme::System) return QApplication::setPalette(PaletteOf(theme));
    QApplication::setPalette(QPalette());
    // Many systems show what is disabled too faintly to be read. All else is left to them.
    QPalette palette;
    PutFaint(palette, IsDark(palette) ? kDark : kLight);
    QApplication::setPalette(palette);
}

}  // namespace kavit
