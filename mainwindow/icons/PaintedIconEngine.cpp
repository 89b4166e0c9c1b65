#include "mainwindow/icons/PaintedIconEngine.h"

#include <QPainter>
#include <QPixmap>

namespace morlevant {

namespace {

void fade(QImage& image) {
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const int grey = 96 + qGray(line[x]) / 2;
            line[x] = qRgba(grey, grey, grey, qAlpha(line[x]) * 3 / 5);
        }
    }
}

} // namespace

QIcon PaintedIconEngine::icon(Drawing drawing, bool greyed) {
    return QIcon(new PaintedIconEngine(std::move(drawing), greyed));
}

PaintedIconEngine::PaintedIconEngine(Drawing drawing, bool greyed)
    : drawing_(std::move(drawing)), greyed_(greyed) {}

QImage PaintedIconEngine::render(const QSize& pixels, QIcon::Mode mode) const {
    QImage image(pixels, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    if (pixels.isEmpty())
        return image;
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        const qreal side = std::min(pixels.width(), pixels.height());
        painter.translate((pixels.width() - side) / 2, (pixels.height() - side) / 2);
        painter.scale(side / 32.0, side / 32.0);
        drawing_(painter);
    }
    if (greyed_ || mode == QIcon::Disabled)
        fade(image);
    return image;
}

void PaintedIconEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
                              QIcon::State) {
    const qreal ratio = painter->device() ? painter->device()->devicePixelRatioF() : 1.0;
    QImage image = render(rect.size() * ratio, mode);
    image.setDevicePixelRatio(ratio);
    painter->drawImage(rect, image);
}

QPixmap PaintedIconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) {
    return scaledPixmap(size, mode, state, 1.0);
}

// Qt asks with the size already in device pixels; scale only tells the pixmap's ratio.
QPixmap PaintedIconEngine::scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State,
                                        qreal scale) {
    QPixmap pixmap = QPixmap::fromImage(render(size, mode));
    pixmap.setDevicePixelRatio(scale);
    return pixmap;
}

QIconEngine* PaintedIconEngine::clone() const {
    return new PaintedIconEngine(drawing_, greyed_);
}

} // namespace morlevant
