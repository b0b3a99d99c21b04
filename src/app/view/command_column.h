#pragma once

#include <QWidget>

#include "app/model/screen.h"
#include "app/model/view.h"

class QLabel;
class QPushButton;

namespace kavit {

class PaletteView;
class SettingsPanel;

// Beside the board: the command buttons, the optimizer's letter, the palette, the editor's buttons
// and the settings panel.
class CommandColumn : public QWidget {
    Q_OBJECT

  public:
    explicit CommandColumn(QWidget* parent);

    void Show(const Screen& screen);
    [[nodiscard]] SettingsPanel* Panel() const { return panel_; }
    [[nodiscard]] PaletteView* Palette() const { return palette_; }
    // The button that the user would press next; none when all are disabled.
    [[nodiscard]] QWidget* NextButton() const;
    // In the order of the keyboard.
    [[nodiscard]] QList<QWidget*> Stops() const;
    // What the shortcuts of the buttons do.
    void PressSolve();
    void PressAnim(bool left);

  signals:
    void SolveClicked();
    void AnimReleased(bool left);
    void ClearClicked();
    void LetterDoubleClicked();
    void ShiftClicked(int index);
    void MirrorRotateClicked(int index);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QPushButton* AddButton(const char* name, const QString& caption, const QString& tip);
    void MakeEditorButtons();

    QPushButton* solve_;
    QPushButton* anim_;
    QPushButton* clear_;
    QLabel* letter_;
    PaletteView* palette_;
    QWidget* editor_;
    QLabel* aside_;
    SettingsPanel* panel_;
};

}  // namespace kavit
