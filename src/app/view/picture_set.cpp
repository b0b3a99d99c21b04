#include "app/view/picture_set.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace kavit {
namespace {

constexpr std::array<const char*, kPictures> kFiles = {
    "floor",       "goal",     "box",      "box_on_goal", "wall",
    "man_on_goal", "man_left", "man_down", "man_right",   "man_up"};  // in the order of Picture

// Colours of the drawings, and what they are on a dark ground.
constexpr const char* kDarkColours[][2] = {
    {"#e9ebee", "#23282f"},  // floor
    {"#dadde2", "#2f353e"},  // and its joints
    {"#d3ebe6", "#173532"},  // goal
    {"#12786c", "#3fbfac"},  // and its mark
    {"#333d4b", "#14181d"},  // mortar
    {"#566275", "#5f6d84"},  // bricks
    {"#6d7a8f", "#7f8ea6"},
};

QByteArray Drawing(Picture picture, bool dark) {
    const char* name = kFiles[static_cast<std::size_t>(picture)];
    QFile file(QStringLiteral(":/art/%1.svg").arg(QLatin1String(name)));
    if (!file.open(QIODevice::ReadOnly)) return {};
    QByteArray drawing = file.readAll();
    if (dark)
        for (const auto& colour : kDarkColours) drawing.replace(colour[0], colour[1]);
    return drawing;
}

}  // namespace

QPixmap PictureSet::Draw(Picture picture, int edge, qreal pixelRatio, bool dark) {
    const int pixels = qRound(edge * pixelRatio);
    QPixmap pixmap(pixels, pixels);
    pixmap.setDevicePixelRatio(pixelRatio);
    pixmap.fill(Qt::transparent);
    QSvgRenderer renderer(Drawing(picture, dark));
    QPainter painter(&pixmap);
    renderer.render(&painter, QRectF(0, 0, edge, edge));
    return pixmap;
}

void PictureSet::SetSize(int edge, bool dark) {
    if (edge == edge_ && dark == dark_) return;
    edge_ = edge;
    dark_ = dark;
    for (int picture = 0; picture < kPictures; ++picture)
        pixmaps_[static_cast<std::size_t>(picture)] =
            Draw(static_cast<Picture>(picture), edge, 1, dark);
}

}  // namespace kavit
