#pragma once

#include <QPlainTextEdit>

#include "app/model/screen.h"

namespace kavit {

// rtxtImport, which lies over the board: it shows the solution's text or takes a level's.
class TextBox : public QPlainTextEdit {
    Q_OBJECT

  public:
    explicit TextBox(QWidget* parent);

    void Show(const Screen& screen);

  signals:
    // A letter was clicked, or Return pressed on it: the line that it stands in, and its place
    // there.
    void LetterClicked(const QString& line, int column);
    void Edited(const QString& text);

  protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;
};

}  // namespace kavit
