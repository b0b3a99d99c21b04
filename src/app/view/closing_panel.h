#pragma once

#include <QWidget>

#include "app/model/screen.h"

class QPlainTextEdit;
class QPushButton;
class QToolButton;

namespace kavit {

class LayerChart;

// What a search took, on demand: a heading that opens the closing text and the chart of layers.
class ClosingPanel : public QWidget {
    Q_OBJECT

  public:
    explicit ClosingPanel(QWidget* parent = nullptr);

    void Show(const Screen& screen);
    void Open(bool open);
    [[nodiscard]] LayerChart* Chart() const { return chart_; }

  signals:
    void Opened(bool open);
    void SaveChartClicked();

  private:
    QToolButton* heading_ = nullptr;
    QWidget* inside_ = nullptr;
    QPlainTextEdit* text_ = nullptr;
    LayerChart* chart_ = nullptr;
    QPushButton* save_ = nullptr;
};

}  // namespace kavit
