#include "app/view/palette_view.h"

#include <QGridLayout>
#include <QPainter>
#include <QToolButton>

#include "app/view/picture_set.h"
#include "app/view/theme.h"

namespace kavit {
namespace {

constexpr int kEdge = 32;
constexpr int kFrame = 4;

// The chosen tool wears a frame: the pressed look of a button alone is hardly seen in some styles.
QIcon ToolIcon(QPixmap picture, const QColor& frame) {
    QIcon icon(picture);
    {
        QPainter painter(&picture);
        painter.setPen(QPen(frame, kFrame, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        const int inset = kFrame / 2;
        painter.drawRect(QRect(0, 0, kEdge, kEdge).adjusted(inset, inset, -inset, -inset));
    }
    icon.addPixmap(picture, QIcon::Normal, QIcon::On);
    return icon;
}

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
        auto* button = buttons_[static_cast<std::size_t>(tool)] = new QToolButton(this);
        const QString& name = names[static_cast<std::size_t>(tool)];
        button->setObjectName(QStringLiteral("ImgEdit%1").arg(tool));
        button->setCheckable(true);
        button->setIconSize({kEdge, kEdge});
        button->setToolTip(name);
        button->setAccessibleName(name);
        grid->addWidget(button, tool / 5, tool % 5);
        connect(button, &QToolButton::clicked, this, [this, tool] { emit ToolClicked(tool); });
    }
    DrawThemed(this, [this] { DrawIcons(); });
}

void PaletteView::DrawIcons() {
    for (int tool = 0; tool < kTools; ++tool) {
        const QPixmap picture =
            PictureSet::Draw(PictureOf(tool), kEdge, devicePixelRatioF(), IsDark(palette()));
        buttons_[static_cast<std::size_t>(tool)]->setIcon(
            ToolIcon(picture, palette().highlight().color()));
    }
}

void PaletteView::Show(int tool) {
    for (int i = 0; i < kTools; ++i) buttons_[static_cast<std::size_t>(i)]->setChecked(i == tool);
}

}  // namespace kavit
