#pragma once

#include <QSlider>
#include <QWidget>
#include <vector>

#include "app/model/replay_look.h"

class QComboBox;
class QLabel;
class QToolButton;

namespace kavit {

// A slider over the moves of a solution, with a mark at each push.
class MoveSlider : public QSlider {
    Q_OBJECT

  public:
    explicit MoveSlider(QWidget* parent = nullptr);
    void SetMarks(std::vector<std::int64_t> marks);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    std::vector<std::int64_t> marks_;
};

// The bar under the board: which solution, where in it, how fast, and who owns the arrow keys. It
// shows what it is told and says what was asked for; the position is not kept here.
class ReplayBar : public QWidget {
    Q_OBJECT

  public:
    explicit ReplayBar(QWidget* parent = nullptr);

    void Show(const ReplayLook& look);

  signals:
    void Go(std::int64_t move);
    void StepPush(bool forward);
    void PlayClicked();
    void SpeedChosen(int index);
    void SolutionChosen(int index);
    void ArrowOwnerChosen(bool replay);

  private:
    void DrawSigns();

    MoveSlider* slider_ = nullptr;
    QToolButton* play_ = nullptr;
    QLabel* place_ = nullptr;
    QComboBox* speed_ = nullptr;
    QComboBox* solution_ = nullptr;
    QComboBox* arrows_ = nullptr;
    ReplayLook look_;
};

}  // namespace kavit
