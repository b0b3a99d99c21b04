#pragma once

#include <QWidget>
#include <array>

#include "app/model/screen.h"

class QToolButton;

namespace kavit {

// The ten tools of the editor, one button each (ImgEdit0 to ImgEdit9); the chosen one is checked.
class PaletteView : public QWidget {
    Q_OBJECT

  public:
    explicit PaletteView(QWidget* parent = nullptr);

    // A button toggles by itself when it is clicked, so all are set.
    void Show(int tool);

  signals:
    void ToolClicked(int tool);

  private:
    void DrawIcons();

    std::array<QToolButton*, kTools> buttons_{};
};

}  // namespace kavit
