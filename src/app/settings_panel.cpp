#include "app/settings_panel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>

namespace kavit {

QComboBox* SettingsPanel::MakeList(const char* name, const QStringList& items,
                                   const QString& label) {
    auto* list = new QComboBox(this);
    list->setObjectName(QLatin1String(name));
    list->setEditable(true);
    list->setInsertPolicy(QComboBox::NoInsert);
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
    QComboBox* positions =
        MakeList("cmbMemory",
                 {QStringLiteral("3000000"), QStringLiteral("5000000"), QStringLiteral("7000000"),
                  QStringLiteral("9000000"), QStringLiteral("11000000"), QStringLiteral("13000000"),
                  QStringLiteral("15000000"), QStringLiteral("17000000")},
                 tr("Max Positions"));
    positions->setToolTip(tr("How many positions the solver can remember; more needs more memory"));
    QComboBox* blocks = MakeList(
        "cmbBlocks",
        {QStringLiteral("5"), QStringLiteral("7"), QStringLiteral("9"), QStringLiteral("11"),
         QStringLiteral("13"), QStringLiteral("15"), QStringLiteral("17")},
        tr("Blocks"));
    blocks->setToolTip(tr("The most boxes a level may have"));
    QComboBox* time =
        MakeList("cmbTime",
                 {QStringLiteral("100"), QStringLiteral("300"), QStringLiteral("600"),
                  QStringLiteral("1200"), QStringLiteral("2400"), QStringLiteral("86400")},
                 tr("Max Time"));
    time->setToolTip(tr("The most seconds a search may take, up to 86400 (a day)"));

    auto* always = new QCheckBox(tr("Write solution Unconditionally"), this);
    always->setObjectName(QStringLiteral("chkWriteSol"));
    always->setToolTip(tr("Write the solution file beside the level, without asking"));
    auto* never = new QCheckBox(tr("Don't Write solution"), this);
    never->setObjectName(QStringLiteral("chkNoWriteSol"));
    never->setToolTip(tr("Write no solution file; the text and the clipboard have the solution"));

    auto* apply = new QPushButton(tr("APPLY"), this);
    apply->setObjectName(QStringLiteral("frmbtnApply"));
    auto* cancel = new QPushButton(tr("CANCEL"), this);
    cancel->setObjectName(QStringLiteral("frmbtnCancel"));

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(apply);
    buttons->addWidget(cancel);
    auto* form = new QFormLayout(this);
    form->addRow(tr("Max Positions"), positions);
    form->addRow(tr("Blocks"), blocks);
    form->addRow(tr("Max Time"), time);
    form->addRow(always);
    form->addRow(never);
    form->addRow(buttons);

    connect(apply, &QPushButton::clicked, this, &SettingsPanel::ApplyClicked);
    connect(cancel, &QPushButton::clicked, this, &SettingsPanel::CancelClicked);
    connect(always, &QCheckBox::clicked, this, &SettingsPanel::WriteSolClicked);
    connect(never, &QCheckBox::clicked, this, &SettingsPanel::NoWriteSolClicked);
}

}  // namespace kavit
