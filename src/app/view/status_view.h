#pragma once

#include <QWidget>

#include "app/model/screen.h"

class QLabel;
class QLineEdit;
class QProgressBar;

namespace kavit {

// Below the board: the two status lines, the bar of the store, and the labels.
class StatusView : public QWidget {
    Q_OBJECT

  public:
    explicit StatusView(QWidget* parent);

    void Show(const Screen& screen);

  private:
    QLabel* AddLabel(const char* name, const QString& accessibleName, const QString& tip);
    QLineEdit* AddLine(const char* name, const QString& accessibleName);

    QLineEdit* left_;
    QLineEdit* right_;
    QProgressBar* progress_;
    QLabel* timer_;
    QLabel* side_;
    QLabel* debug_;
    QLabel* details_;
    QLabel* size_;
};

}  // namespace kavit
