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
    void Edited(const QString& text);

  protected:
    bool event(QEvent* event) override;
};

}  // namespace kavit
