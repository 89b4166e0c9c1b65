#pragma once

#include <QIconEngine>
#include <functional>

namespace morlevant {

// An icon drawn by code on a 32 x 32 canvas and rendered at whatever size and pixel ratio
// it is asked for, so it stays sharp on every screen. A greyed icon (the disabled look of a
// toolbar button) is the same drawing in faded grey.
class PaintedIconEngine final : public QIconEngine {
public:
    using Drawing = std::function<void(QPainter&)>;

    static QIcon icon(Drawing drawing, bool greyed = false);

    PaintedIconEngine(Drawing drawing, bool greyed);

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state,
                         qreal scale) override;
    QIconEngine* clone() const override;
    QString key() const override { return QStringLiteral("morlevant-painted"); }

private:
    QImage render(const QSize& pixels, QIcon::Mode mode) const;

    Drawing drawing_;
    bool greyed_;
};

} // namespace morlevant
