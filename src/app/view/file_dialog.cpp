#include "app/view/file_dialog.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>

#include "app/view/plain_box.h"

namespace kavit {
namespace {

QLineEdit* NameField(const QFileDialog& dialog) {
    return dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
}

}  // namespace

QString FileDialog::Ask(const QString& suggested) {
    if (const QLineEdit* field = NameField(*this)) {
        const auto* buttons = findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"));
        auto* take = buttons->button(acceptMode() == AcceptSave ? QDialogButtonBox::Save
                                                                : QDialogButtonBox::Open);
        connect(field, &QLineEdit::textChanged, take,
                [take](const QString& name) { take->setEnabled(!name.isEmpty()); });
    }
    if (!suggested.isEmpty()) selectFile(suggested);
    if (exec() != Accepted) return {};
    if (chosen_.isEmpty() && !selectedFiles().isEmpty()) chosen_ = selectedFiles().constFirst();
    return chosen_;
}

void FileDialog::accept() {
    QLineEdit* field = NameField(*this);
    // Desktops with a dialog of their own have no such field, and know what was chosen.
    if (field == nullptr) return QFileDialog::accept();
    QString name = field->text();
    if (name.startsWith(QLatin1String("~/"))) name.replace(0, 1, QDir::homePath());
    QString path = QDir::cleanPath(directory().absoluteFilePath(name));
    if (QFileInfo(path).isDir()) {
        setDirectory(path);
        return field->clear();
    }
    if (acceptMode() == AcceptSave && !QFileInfo(path).fileName().contains(QLatin1Char('.'))) {
        path += QLatin1Char('.') + defaultSuffix();
    }
    if (!MayTake(path)) return;
    chosen_ = path;
    done(Accepted);
}

bool FileDialog::MayTake(const QString& path) {
    const QFileInfo file(path);
    if (acceptMode() == AcceptOpen) {
        if (file.exists()) return true;
        Say(tr("file %1 Not found").arg(path), false);
        return false;
    }
    if (!file.exists() || file.isDir()) return true;  // who writes it says that it is a folder
    return Say(tr("%1 exists already. Replace it?").arg(file.fileName()), true);
}

// True when a question is answered with Yes.
bool FileDialog::Say(const QString& text, bool question) {
    QMessageBox box(this);
    PutPlain(box, text);
    if (question) {
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(QMessageBox::No);
    }
    return box.exec() == QMessageBox::Yes;
}

}  // namespace kavit
