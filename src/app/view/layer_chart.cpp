#include "app/view/layer_chart.h"

#include <QBuffer>
#include <QFileInfo>
#include <QHelpEvent>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QSaveFile>
#include <QSvgGenerator>
#include <QToolTip>
#include <cmath>

#include "app/view/theme.h"

namespace kavit {
namespace {

std::int64_t At(const std::vector<std::int64_t>& layers, std::size_t layer) {
    return layer < layers.size() ? layers[layer] : 0;
}

// 0 for nothing, above 0 for one position.
double Size(std::int64_t positions) {
    return positions <= 0 ? 0 : std::log10(static_cast<double>(positions)) + 0.3;
}

}  // namespace

LayerChart::LayerChart(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("chtLayers"));
    setAccessibleName(tr("Positions by layer"));
    setFocusPolicy(Qt::StrongFocus);
}

void LayerChart::ShowLayers(std::vector<std::int64_t> forward, std::vector<std::int64_t> backward) {
    forward_ = std::move(forward);
    backward_ = std::move(backward);
    setAccessibleDescription(QString::fromUtf8(Csv()));
    update();
}

QByteArray LayerChart::Csv() const {
    QByteArray csv = "layer,forward,backward\n";
    for (std::size_t layer = 0; layer < Layers(); ++layer) {
        csv += QByteArray::number(static_cast<qulonglong>(layer)) + ',' +
               QByteArray::number(static_cast<qlonglong>(At(forward_, layer))) + ',' +
               QByteArray::number(static_cast<qlonglong>(At(backward_, layer))) + '\n';
    }
    return csv;
}

// Room for the numbers at the left and the layers below.
QRectF LayerChart::Plot(const QRectF& area) const {
    return area.adjusted(48, 8, -8, -20);
}

void LayerChart::Draw(QPainter& painter, const QRectF& area) const {
    const QColor text = palette().color(QPalette::Text);
    const bool dark = IsDark(palette());
    painter.fillRect(area, palette().color(QPalette::Base));
    painter.setPen(text);
    if (Layers() == 0) return painter.drawText(area, Qt::AlignCenter, tr("No search yet"));
    double most = 1;
    for (std::size_t layer = 0; layer < Layers(); ++layer)
        most = std::max({most, Size(At(forward_, layer)), Size(At(backward_, layer))});
    const QRectF plot = Plot(area);
    const double middle = plot.center().y();
    const double unit = plot.height() / 2 / most;

    // A line for each power of ten, on both sides.
    for (int power = 0; power + 0.3 < most; power += most > 5 ? 2 : 1) {
        for (const int side : {-1, 1}) {
            const double y = middle + side * (power + 0.3) * unit;
            painter.setPen(QPen(palette().color(QPalette::Mid), 0, Qt::DotLine));
            painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
            if (power == 0) continue;  // its two lines lie too close for numbers
            painter.setPen(text);
            painter.drawText(QRectF(area.left(), y - 8, 44, 16), Qt::AlignRight | Qt::AlignVCenter,
                             power < 3 ? QString::number(std::pow(10, power))
                                       : QStringLiteral("1e%1").arg(power));
        }
    }
    const double width = plot.width() / static_cast<double>(Layers());
    const QColor forward = dark ? QColor(0x7f, 0xb8, 0xff) : QColor(0x1d, 0x5f, 0xb4);
    const QColor backward = dark ? QColor(0xff, 0xc0, 0x66) : QColor(0xa8, 0x5a, 0x00);
    for (std::size_t layer = 0; layer < Layers(); ++layer) {
        const double x = plot.left() + static_cast<double>(layer) * width;
        const double bar = std::max(1.0, width * 0.85);
        const double up = Size(At(forward_, layer)) * unit;
        painter.fillRect(QRectF(x, middle - up, bar, up), forward);
        painter.fillRect(QRectF(x, middle, bar, Size(At(backward_, layer)) * unit), backward);
    }
    painter.setPen(text);
    painter.drawLine(QPointF(plot.left(), middle), QPointF(plot.right(), middle));
    const QRectF below(plot.left(), plot.bottom() + 2, plot.width(), 18);
    painter.drawText(below, Qt::AlignLeft, QStringLiteral("0"));
    painter.drawText(below, Qt::AlignRight, QString::number(Layers() - 1));
    painter.drawText(below, Qt::AlignHCenter, tr("layer; forward above, backward below"));
}

void LayerChart::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    Draw(painter, rect());
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

bool LayerChart::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || Layers() == 0) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QRectF plot = Plot(rect());
    const double part = (help->pos().x() - plot.left()) / plot.width();
    if (part < 0 || part >= 1) return QWidget::event(event);
    const auto layer = static_cast<std::size_t>(part * static_cast<double>(Layers()));
    QToolTip::showText(help->globalPos(), tr("Layer %1: %2 forward, %3 backward")
                                              .arg(layer)
                                              .arg(At(forward_, layer))
                                              .arg(At(backward_, layer)));
    return true;
}

QString LayerChart::Save(const QString& name) const {
    QSaveFile file(name);
    if (!file.open(QIODevice::WriteOnly)) return file.errorString();
    const QByteArray kind = QFileInfo(name).suffix().toLower().toLatin1();
    const QSize size = sizeHint() * 2;
    if (kind == "csv") {
        file.write(Csv());
    } else if (kind == "svg") {
        QBuffer drawing;
        QSvgGenerator generator;
        generator.setOutputDevice(&drawing);
        generator.setSize(size);
        generator.setViewBox(QRect(QPoint(0, 0), size));
        generator.setTitle(accessibleName());
        QPainter painter(&generator);
        Draw(painter, QRectF(QPointF(0, 0), size));
        painter.end();
        file.write(drawing.data());
    } else if (QImageWriter::supportedImageFormats().contains(kind)) {
        QImage image(size, QImage::Format_RGB32);
        QPainter painter(&image);
        Draw(painter, QRectF(QPointF(0, 0), size));
        painter.end();
        image.save(&file, kind.constData());
    } else {
        return tr("%1: no picture (.png, .svg) and no table (.csv)").arg(name);
    }
    return file.commit() ? QString() : file.errorString();
}

}  // namespace kavit
