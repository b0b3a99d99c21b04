#pragma once

#include <QPixmap>
#include <array>

#include "app/model/screen.h"

namespace kavit {

// The artwork drawn at one size: each picture is drawn from its SVG when the size changes, so that
// cells stay crisp at any scale and at any pixel ratio of the screen.
class PictureSet {
  public:
    // Edge in logical pixels.
    void SetSize(int edge, qreal pixelRatio);
    [[nodiscard]] const QPixmap& At(Picture picture) const {
        return pixmaps_[static_cast<std::size_t>(picture)];
    }

    // One picture on its own, for buttons and icons.
    [[nodiscard]] static QPixmap Draw(Picture picture, int edge, qreal pixelRatio);

  private:
    int edge_ = 0;
    qreal pixelRatio_ = 0;
    std::array<QPixmap, kPictures> pixmaps_;
};

}  // namespace kavit
