#include "app/view/dialogs.h"

#include <QInputDialog>
#include <QMessageBox>

#include "app/view/file_dialog.h"
#include "app/view/plain_box.h"
#include "app/view/plain_text.h"

namespace kavit {
namespace {

std::optional<std::string> Chosen(const QString& path) {
    if (path.isEmpty()) return std::nullopt;
    return ToPath(path);
}

// Where no window manager runs, nobody gives the keyboard back to the window behind a dialog.
class KeyboardBack {
  public:
    explicit KeyboardBack(QWidget* window) : window_(window) {}
    ~KeyboardBack() { window_->activateWindow(); }
    KeyboardBack(const KeyboardBack&) = delete;
    KeyboardBack& operator=(const KeyboardBack&) = delete;

  private:
    QWidget* window_;
};

}  // namespace

void ShowBox(QWidget* parent, const QString& text) {
    auto* box = new QMessageBox(parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    PutPlain(*box, text);
    for (const QMessageBox* other : parent->findChildren<QMessageBox*>()) {
        if (other->isVisible() && other->text() == box->text()) {
            delete box;
            return;
        }
    }
    QObject::connect(box, &QDialog::finished, parent, &QWidget::activateWindow);
    box->open();
}

Choice AskBox(QWidget* parent, const QString& text, Choices choices) {
    const KeyboardBack back(parent);
    QMessageBox box(parent);
    PutPlain(box, text);
    switch (choices) {
        case Choices::OkCancel:
            box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
            break;
        case Choices::YesNo:
            box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
            break;
        case Choices::SaveDiscardCancel:
            box.setStandardButtons(QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
            break;
    }
    switch (box.exec()) {
        case QMessageBox::Ok:
        case QMessageBox::Yes:
        case QMessageBox::Save:
            return Choice::Yes;
        case QMessageBox::No:
        case QMessageBox::Discard:
            return Choice::No;
        default:
            return Choice::Cancel;
    }
}

std::optional<std::string> AskForOpenFile(QWidget* parent, const std::string& folder,
                                          const std::string& name) {
    const KeyboardBack back(parent);
    FileDialog dialog(parent, QObject::tr("Open File"), FromPath(folder));
    dialog.setObjectName(QStringLiteral("CommonDialog1"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    const QString all = QObject::tr("Levels and Collections (*.xsb *.sok *.txt)");
    dialog.setNameFilters(
        {QObject::tr("Sokoban Levels (*.xsb)"), all, QObject::tr("All Files (*)")});
    dialog.selectNameFilter(all);
    return Chosen(dialog.Ask(FromPath(name)));
}

std::optional<std::string> AskForSaveFile(QWidget* parent, FileKind kind, const std::string& folder,
                                          const std::string& name, const QString& what) {
    struct Look {
        QString Title, Name, Suffix, Filter;
    };
    const Look look =
        kind == FileKind::Solution
            ? Look{QObject::tr("Save Solution"), QStringLiteral("dlgSaveSolution"),
                   QStringLiteral("sol"), QObject::tr("Sokoban Solution (*.sol)")}
        : kind == FileKind::Level
            ? Look{QObject::tr("Save Level"), QStringLiteral("dlgSaveLevel"), QStringLiteral("xsb"),
                   QObject::tr("Sokoban Levels (*.xsb)")}
            : Look{QObject::tr("Save Collection"), QStringLiteral("dlgSaveCollection"),
                   QStringLiteral("sok"), QObject::tr("Sokoban Collections (*.sok *.xsb *.txt)")};
    const KeyboardBack back(parent);
    const QString title =
        what.isEmpty() ? look.Title : QObject::tr("%1 (%2)").arg(look.Title, what);
    FileDialog dialog(parent, title, FromPath(folder));
    dialog.setObjectName(look.Name);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(look.Suffix);
    dialog.setNameFilter(look.Filter);
    return Chosen(dialog.Ask(FromPath(name)));
}

QString AskForChartFile(QWidget* parent) {
    const KeyboardBack back(parent);
    FileDialog dialog(parent, QObject::tr("Save Chart"));
    dialog.setObjectName(QStringLiteral("dlgSaveChart"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("png"));
    dialog.setNameFilter(QObject::tr("Pictures and tables (*.png *.svg *.csv)"));
    return dialog.Ask(QStringLiteral("layers.png"));
}

std::optional<std::string> AskForText(QWidget* parent, const QString& title, const QString& prompt,
                                      const QString& answer) {
    const KeyboardBack back(parent);
    QInputDialog dialog(parent);
    dialog.setWindowTitle(title);
    dialog.setLabelText(prompt);
    dialog.setTextValue(answer);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return Utf8(dialog.textValue());
}

}  // namespace kavit
