#pragma once

#include <QDialog>

class QPlainTextEdit;

namespace kavit {

// HelpForm: one of five read-only texts above a Close button. It keeps its size for the session.
class HelpWindow : public QDialog {
    Q_OBJECT

  public:
    explicit HelpWindow(QWidget* parent);

    // 1 Spanish, 2 French, 3 English, 4 the level's name, 5 about; any other leaves the text empty.
    void ShowTopic(int topic, const QString& levelName);

  private:
    void Fill(const QString& caption, const QString& text);

    QPlainTextEdit* text_;
};

}  // namespace kavit
