#pragma once

#include <QFrame>

#include "app/model/screen.h"
#include "app/model/view.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;

namespace kavit {

// The panel of the sizes and of the two switches about the solution file.
class SettingsPanel : public QFrame {
    Q_OBJECT

  public:
    explicit SettingsPanel(QWidget* parent = nullptr);

    void Show(const Screen& screen);
    [[nodiscard]] QWidget* WidgetAt(Place place) const;
    // In the order of the keyboard.
    [[nodiscard]] QList<QWidget*> Stops() const;

  signals:
    void Edited(const kavit::PanelFields& fields);
    void SizeChosen();
    void ApplyClicked();
    void CancelClicked();
    void WriteSolClicked(bool on);
    void NoWriteSolClicked(bool on);

  private:
    QComboBox* MakeList(const char* name, const QStringList& items, const QString& label);

    QComboBox* memory_;
    QComboBox* blocks_;
    QComboBox* time_;
    QLabel* size_;
    QCheckBox* always_;
    QCheckBox* never_;
    QPushButton* apply_;
    QPushButton* cancel_;
};

}  // namespace kavit
