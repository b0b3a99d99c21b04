#pragma once

#include <QFrame>

class QComboBox;

namespace kavit {

// The panel of the sizes and of the two switches about the solution file.
class SettingsPanel : public QFrame {
    Q_OBJECT

  public:
    explicit SettingsPanel(QWidget* parent = nullptr);

  signals:
    void ApplyClicked();
    void CancelClicked();
    void SizeChosen();
    void WriteSolClicked();
    void NoWriteSolClicked();

  private:
    QComboBox* MakeList(const char* name, const QStringList& items, const QString& label);
};

}  // namespace kavit
