#pragma once

#include <QFileDialog>
#include <QString>

namespace kavit {

// The toolkit's file dialog, but for what it makes of odd names: it takes a name with quotes for
// several names, and shows one with a tag as markup when it asks about it. So a name that was typed
// is taken here, as it was written, and the questions are our own.
class FileDialog final : public QFileDialog {
  public:
    using QFileDialog::QFileDialog;

    // The chosen file with its folder; empty when the user cancels.
    [[nodiscard]] QString Ask(const QString& suggested);

  protected:
    void accept() override;

  private:
    [[nodiscard]] bool MayTake(const QString& path);
    bool Say(const QString& text, bool question);

    QString chosen_;
};

}  // namespace kavit
