#include "app/palette_view.h"

#include <QGridLayout>
#include <QToolButton>
#include <array>

#include "app/picture_set.h"

namespace kavit {
namespace {

constexpr int kEdge = 32;

}  // namespace

PaletteView::PaletteView(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("ImgEdit"));
    const std::array<QString, 10> names = {tr("Floor"),
                                           tr("Goal"),
                                           tr("Box"),
                                           tr("Box on a goal"),
                                           tr("Wall"),
                                           tr("Man"),
                                           tr("Man looking left"),
                                           tr("Man looking right"),
                                           tr("Man looking up"),
                                           tr("Man on a goal")};
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(2);
    for (int tool = 0; tool < 10; ++tool) {
        auto* button = new QToolButton(this);
        const QString& name = names[static_cast<std::size_t>(tool)];
        button->setObjectName(QStringLiteral("ImgEdit%1").arg(tool));
        button->setCheckable(true);
        button->setIcon(QIcon(PictureSet::Draw(PictureOf(static_cast<std::uint8_t>(tool)), kEdge,
                                               devicePixelRatioF())));
        button->setIconSize({kEdge, kEdge});
        button->setToolTip(name);
        button->setAccessibleName(name);
        grid->addWidget(button, tool / 5, tool % 5);
        connect(button, &QToolButton::clicked, this, [this, tool] { emit ToolClicked(tool); });
    }
}

}  // namespace kavit
