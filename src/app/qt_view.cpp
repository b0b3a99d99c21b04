#include "app/qt_view.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTimer>

#include "app/board_view.h"
#include "app/file_dialog.h"
#include "app/help_window.h"
#include "app/plain_box.h"
#include "app/wide_registers.h"

namespace kavit {
namespace {

QString FromUtf8(const std::string& text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// File names are bytes; those that are no UTF-8 must come back as they were.
QString FromPath(const std::string& path) {
    return QFile::decodeName(QByteArray::fromStdString(path));
}

std::string ToPath(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

std::optional<std::string> Chosen(const QString& path) {
    if (path.isEmpty()) return std::nullopt;
    return ToPath(path);
}

// A menu is shown, hidden and enabled through the entry that opens it.
QAction* ActionOf(QObject* object) {
    if (auto* menu = qobject_cast<QMenu*>(object)) return menu->menuAction();
    return qobject_cast<QAction*>(object);
}

}  // namespace

QtView::QtView(QMainWindow* window) : window_(window), board_(window->findChild<BoardView*>()) {
    for (std::size_t i = 0; i < controls_.size(); ++i) {
        const QLatin1String name(kControlNames[i].data(),
                                 static_cast<qsizetype>(kControlNames[i].size()));
        controls_[i] = window->findChild<QObject*>(name);
        if (controls_[i] == nullptr)
            qFatal("the window has no control %s", kControlNames[i].data());
    }
}

void QtView::SetText(Control control, const std::string& text) {
    const QString shown = FromUtf8(text);
    QObject* object = Of(control);
    if (auto* label = qobject_cast<QLabel*>(object)) return label->setText(shown);
    if (auto* button = qobject_cast<QAbstractButton*>(object)) return button->setText(shown);
    if (auto* list = qobject_cast<QComboBox*>(object)) return list->setEditText(shown);
    if (auto* box = qobject_cast<QPlainTextEdit*>(object)) return box->setPlainText(shown);
    if (auto* line = qobject_cast<QLineEdit*>(object)) {
        line->setText(shown);
        line->setCursorPosition(0);
    }
}

std::string QtView::Text(Control control) const {
    const QObject* object = Of(control);
    if (const auto* list = qobject_cast<const QComboBox*>(object)) {
        return list->currentText().toStdString();
    }
    if (const auto* box = qobject_cast<const QPlainTextEdit*>(object)) {
        return box->toPlainText().toStdString();
    }
    return {};
}

void QtView::SetEnabled(Control control, bool enabled) {
    QObject* object = Of(control);
    if (auto* timer = qobject_cast<QTimer*>(object)) {
        if (enabled && !timer->isActive()) timer->start();
        if (!enabled) timer->stop();
    } else if (auto* widget = qobject_cast<QWidget*>(object)) {
        widget->setEnabled(enabled);
    }
}

void QtView::SetVisible(Control control, bool visible) {
    if (QAction* action = ActionOf(Of(control))) {
        action->setVisible(visible);
    } else if (auto* widget = qobject_cast<QWidget*>(Of(control))) {
        widget->setVisible(visible);
    }
}

void QtView::SetChecked(Control control, bool checked) {
    if (QAction* action = ActionOf(Of(control))) {
        action->setChecked(checked);
    } else if (auto* button = qobject_cast<QAbstractButton*>(Of(control))) {
        button->setChecked(checked);
    }
}

bool QtView::Checked(Control control) const {
    const auto* button = qobject_cast<const QAbstractButton*>(Of(control));
    return button != nullptr && button->isChecked();
}

void QtView::SetUnderlined(Control control, bool underlined) {
    if (auto* widget = qobject_cast<QWidget*>(Of(control))) {
        QFont font = widget->font();
        font.setUnderline(underlined);
        widget->setFont(font);
    }
}

void QtView::SetReadOnly(Control control, bool readOnly) {
    auto* box = qobject_cast<QPlainTextEdit*>(Of(control));
    if (box == nullptr) return;
    box->setReadOnly(readOnly);
    if (readOnly) {  // the toolkit lets the mouse alone select such text
        box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    }
}

void QtView::SetFocus(Control control) {
    if (auto* widget = qobject_cast<QWidget*>(Of(control))) widget->setFocus(Qt::OtherFocusReason);
}

void QtView::SetTitle(const std::string& title) {
    // "[*]" is the toolkit's mark for unsaved changes; doubled, it shows as written.
    window_->setWindowTitle(FromUtf8(title).replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
}

void QtView::SetProgressRange(int most) {
    static_cast<QProgressBar*>(Of(Control::PBarAdvance))->setRange(0, most);
}

void QtView::SetProgress(int value) {
    static_cast<QProgressBar*>(Of(Control::PBarAdvance))->setValue(value);
}

void QtView::ShowCell(int index, Picture picture) {
    board_->ShowCell(index, picture);
}

void QtView::Message(const std::string& text) {
    QMessageBox box(window_);
    PutPlain(box, FromUtf8(text));
    box.exec();
}

void QtView::Notice(const std::string& text) {
    auto* box = new QMessageBox(window_);
    box->setAttribute(Qt::WA_DeleteOnClose);
    PutPlain(*box, FromUtf8(text));
    box->open();
}

bool QtView::AskOkCancel(const std::string& text) {
    QMessageBox box(window_);
    PutPlain(box, FromUtf8(text));
    box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
    return box.exec() == QMessageBox::Ok;
}

bool QtView::AskYesNo(const std::string& text) {
    QMessageBox box(window_);
    PutPlain(box, FromUtf8(text));
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

std::optional<std::string> QtView::AskOpenFile(const std::string& folder, const std::string& name) {
    FileDialog dialog(window_, QObject::tr("Open File"), FromPath(folder));
    dialog.setObjectName(QStringLiteral("CommonDialog1"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilters({QObject::tr("Sokoban Levels (*.xsb)"), QObject::tr("All Files (*)")});
    return Chosen(dialog.Ask(FromPath(name)));
}

std::optional<std::string> QtView::AskSaveFile(const std::string& folder, const std::string& name) {
    FileDialog dialog(window_, QObject::tr("Save Solution"), FromPath(folder));
    dialog.setObjectName(QStringLiteral("dlgSaveSolution"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDefaultSuffix(QStringLiteral("sol"));
    dialog.setNameFilter(QObject::tr("Sokoban Solution (*.sol)"));
    return Chosen(dialog.Ask(FromPath(name)));
}

std::optional<std::string> QtView::AskText(const std::string& title, const std::string& prompt,
                                           const std::string& answer) {
    QInputDialog dialog(window_);
    dialog.setWindowTitle(FromUtf8(title));
    dialog.setLabelText(FromUtf8(prompt));
    dialog.setTextValue(FromUtf8(answer));
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.textValue().toStdString();
}

std::string QtView::Clipboard() const {
    return QApplication::clipboard()->text().toStdString();
}

void QtView::SetClipboard(const std::string& text) {
    QApplication::clipboard()->setText(FromUtf8(text));
}

void QtView::ShowHelp(int topic, const std::string& levelName) {
    if (help_ == nullptr) help_ = new HelpWindow(window_);
    help_->ShowTopic(topic, levelName);
}

void QtView::ProcessEvents() {
    QApplication::processEvents();
    ClearWideRegisters();
}

void QtView::Repaint() {
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void QtView::Quit() {
    window_->setProperty("kavitQuit", true);
    window_->close();
    QApplication::quit();
}

std::string QtView::Translated(const char* text) const {
    return QCoreApplication::translate("Shell", text).toStdString();
}

}  // namespace kavit
