#pragma once

#include <QWidget>
#include <algorithm>
#include <cstdint>
#include <vector>

namespace kavit {

// How many positions each layer of a search holds: forward above the line, backward below it. The
// bars are as long as the logarithms, for layers grow by factors.
class LayerChart : public QWidget {
    Q_OBJECT

  public:
    explicit LayerChart(QWidget* parent = nullptr);

    // Entry k: positions that lie k pushes from the start, or from the end.
    void ShowLayers(std::vector<std::int64_t> forward, std::vector<std::int64_t> backward);

    // By the end of the name: .csv, .svg, and pictures of any kind that is known. "" or what went
    // wrong; a file is replaced whole or not at all.
    [[nodiscard]] QString Save(const QString& name) const;

    [[nodiscard]] QSize sizeHint() const override { return {480, 220}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {240, 140}; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

  private:
    [[nodiscard]] std::size_t Layers() const { return std::max(forward_.size(), backward_.size()); }
    [[nodiscard]] QRectF Plot(const QRectF& area) const;
    // "layer,forward,backward" and a row a layer.
    [[nodiscard]] QByteArray Csv() const;
    void Draw(QPainter& painter, const QRectF& area) const;

    std::vector<std::int64_t> forward_;
    std::vector<std::int64_t> backward_;
};

}  // namespace kavit
