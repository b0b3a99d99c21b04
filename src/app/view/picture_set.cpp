#include "app/view/picture_set.h"

#include <QPainter>
#include <QSvgRenderer>

namespace kavit {
namespace {

constexpr std::array<const char*, kPictures> kFiles = {
    "floor",       "goal",     "box",      "box_on_goal", "wall",
    "man_on_goal", "man_left", "man_down", "man_right",   "man_up"};  // in the order of Picture

}  // namespace

QPixmap PictureSet::Draw(Picture picture, int edge, qreal pixelRatio) {
    const int pixels = qRound(edge * pixelRatio);
    QPixmap pixmap(pixels, pixels);
    pixmap.fill(Qt::transparent);
    const char* file = kFiles[static_cast<std::size_t>(picture)];
    QSvgRenderer renderer(QStringLiteral(":/art/%1.svg").arg(QLatin1String(file)));
    QPainter painter(&pixmap);
    renderer.render(&painter, QRectF(0, 0, pixels, pixels));
    painter.end();
    pixmap.setDevicePixelRatio(pixelRatio);
    return pixmap;
}

void PictureSet::SetSize(int edge, qreal pixelRatio) {
    if (edge == edge_ && qFuzzyCompare(pixelRatio, pixelRatio_)) return;
    edge_ = edge;
    pixelRatio_ = pixelRatio;
    for (int picture = 0; picture < kPictures; ++picture) {
        const auto index = static_cast<std::size_t>(picture);
        pixmaps_[index] = Draw(static_cast<Picture>(picture), edge, pixelRatio);
    }
}

}  // namespace kavit
