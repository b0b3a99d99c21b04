#pragma once

#include <QWidget>

namespace kavit {

// The ten tools of the editor, one button each (ImgEdit0 to ImgEdit9); the chosen one is checked.
class PaletteView : public QWidget {
    Q_OBJECT

  public:
    explicit PaletteView(QWidget* parent = nullptr);

  signals:
    void ToolClicked(int tool);
};

}  // namespace kavit
