#include "app/view/settings_panel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "app/view/plain_text.h"

namespace kavit {

QComboBox* SettingsPanel::MakeList(const char* name, const QStringList& items,
                                   const QString& label) {
    auto* list = new QComboBox(this);
    list->setObjectName(QLatin1String(name));
    list->setEditable(true);
    list->setInsertPolicy(QComboBox::NoInsert);
    list->setCompleter(nullptr);  // 50000 is what was typed, and not the beginning of 5000000
    list->addItems(items);
    list->setAccessibleName(label);
    connect(list, &QComboBox::activated, this, &SettingsPanel::SizeChosen);
    return list;
}

SettingsPanel::SettingsPanel(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("frmSizes"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);

    // The offers are suggestions: any number can be typed.
    const auto offers = [](const char* numbers) {
        return QString::fromLatin1(numbers).split(QLatin1Char(' '));
    };
    memory_ = MakeList("cmbMemory",
                       offers("3000000 5000000 7000000 9000000 11000000 13000000 15000000 "
                              "17000000"),
                       tr("Max Positions"));
    memory_->setToolTip(tr("How many positions the solver can remember; more needs more memory"));
    blocks_ = MakeList("cmbBlocks", offers("5 7 9 11 13 15 17"), tr("Blocks"));
    blocks_->setToolTip(tr("The most boxes a level may have"));
    time_ = MakeList("cmbTime", offers("100 300 600 1200 2400 86400"), tr("Max Time"));
    time_->setToolTip(tr("The most seconds a search may take, up to 86400 (a day)"));

    always_ = new QCheckBox(tr("Write solution Unconditionally"), this);
    always_->setObjectName(QStringLiteral("chkWriteSol"));
    always_->setToolTip(tr("Write the solution file beside the level, without asking"));
    never_ = new QCheckBox(tr("Don't Write solution"), this);
    never_->setObjectName(QStringLiteral("chkNoWriteSol"));
    never_->setToolTip(tr("Write no solution file; the text and the clipboard have the solution"));

    apply_ = new QPushButton(tr("APPLY"), this);
    apply_->setObjectName(QStringLiteral("frmbtnApply"));
    cancel_ = new QPushButton(tr("CANCEL"), this);
    cancel_->setObjectName(QStringLiteral("frmbtnCancel"));

    size_ = new QLabel(this);
    size_->setObjectName(QStringLiteral("lblMemory"));
    size_->setTextFormat(Qt::PlainText);
    size_->setAccessibleName(tr("Memory that these sizes take"));

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(apply_);
    buttons->addWidget(cancel_);
    auto* form = new QFormLayout(this);
    form->addRow(tr("Max Positions"), memory_);
    form->addRow(tr("Blocks"), blocks_);
    form->addRow(tr("Max Time"), time_);
    form->addRow(size_);
    form->addRow(always_);
    form->addRow(never_);
    form->addRow(buttons);

    for (const QComboBox* list : {memory_, blocks_, time_}) {
        connect(list, &QComboBox::editTextChanged, this, [this] {
            emit Edited({Utf8(memory_->currentText()), Utf8(blocks_->currentText()),
                         Utf8(time_->currentText())});
        });
    }
    connect(apply_, &QPushButton::clicked, this, &SettingsPanel::ApplyClicked);
    connect(cancel_, &QPushButton::clicked, this, &SettingsPanel::CancelClicked);
    connect(always_, &QCheckBox::clicked, this, &SettingsPanel::WriteSolClicked);
    connect(never_, &QCheckBox::clicked, this, &SettingsPanel::NoWriteSolClicked);
}

void SettingsPanel::Show(const Screen& screen) {
    const QSignalBlocker blocked(this);  // what is shown here nobody typed
    const auto put = [](QComboBox* list, const std::string& text) {
        if (Utf8(list->currentText()) != text) list->setEditText(Shown(text));
    };
    put(memory_, screen.Panel.Memory);
    put(blocks_, screen.Panel.Blocks);
    put(time_, screen.Panel.Time);
    size_->setText(Shown(screen.PanelMemory));
    always_->setChecked(screen.WriteSol);
    never_->setChecked(screen.NoWriteSol);
    setVisible(screen.PanelVisible);
}

QWidget* SettingsPanel::WidgetAt(Place place) const {
    switch (place) {
        case Place::Memory:
            return memory_;
        case Place::Blocks:
            return blocks_;
        case Place::Time:
            return time_;
        case Place::Apply:
            return apply_;
        default:
            return cancel_;
    }
}

QList<QWidget*> SettingsPanel::Stops() const {
    return {memory_, blocks_, time_, always_, never_, apply_, cancel_};
}

}  // namespace kavit
