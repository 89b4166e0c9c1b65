#include "mainwindow/icons/IconGlyphs.h"

#include <QPainter>
#include <QPainterPath>

namespace morlevant::glyphs {

namespace {

const QColor outline(0x4a, 0x5a, 0x6e);

QPen pen(const QColor& colour, qreal width) {
    return QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

void polygon(QPainter& p, std::initializer_list<QPointF> points, const QColor& fill,
             const QColor& line, qreal width = 1.4) {
    p.setPen(pen(line, width));
    p.setBrush(fill);
    p.drawPolygon(QPolygonF(QList<QPointF>(points)));
}

} // namespace

void page(QPainter& p) {
    polygon(p, {{7, 3}, {20, 3}, {26, 9}, {26, 29}, {7, 29}}, QColor(0xfb, 0xfc, 0xfe), outline);
    polygon(p, {{20, 3}, {20, 9}, {26, 9}}, QColor(0xd8, 0xe0, 0xea), outline);
}

void textLines(QPainter& p) {
    p.setPen(pen(QColor(0x6f, 0x86, 0xa3), 1.6));
    for (const int y : {13, 17, 21, 25})
        p.drawLine(QPointF(10.5, y), QPointF(y == 25 ? 18 : 22.5, y));
}

void picture(QPainter& p, const QColor& frame) {
    p.setPen(pen(frame, 1.4));
    p.setBrush(QColor(0xdf, 0xf0, 0xff));
    p.drawRect(QRectF(9.5, 12, 14, 13));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0xf2, 0xb1, 0x22));
    p.drawEllipse(QPointF(19.5, 15.5), 1.8, 1.8);
    polygon(p, {{10, 24.5}, {14.5, 17}, {18, 22}, {20, 20}, {23, 24.5}}, QColor(0x3f, 0x9b, 0x4f),
            QColor(0x2f, 0x7a, 0x3c), 1.0);
}

void archive(QPainter& p) {
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0xc8, 0x94, 0x3a));
    p.drawRect(QRectF(14, 3.7, 4, 25));
    p.setPen(pen(QColor(0x6b, 0x4a, 0x12), 1.2));
    for (int y = 6; y <= 20; y += 3)
        p.drawLine(QPointF(14, y), QPointF(18, y));
    p.setBrush(QColor(0x9a, 0x6b, 0x1e));
    p.drawRoundedRect(QRectF(13, 21, 6, 6), 1, 1);
}

void program(QPainter& p) {
    p.setPen(pen(outline, 1.4));
    p.setBrush(QColor(0xf5, 0xf8, 0xfc));
    p.drawRoundedRect(QRectF(4, 6, 24, 20), 2, 2);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x2d, 0x6c, 0xc0));
    p.drawRect(QRectF(4.7, 6.7, 22.6, 4.6));
    p.setPen(pen(QColor(0x2d, 0x6c, 0xc0), 2));
    p.drawLine(QPointF(9, 16), QPointF(12.5, 19));
    p.drawLine(QPointF(12.5, 19), QPointF(9, 22));
    p.drawLine(QPointF(15, 22), QPointF(21, 22));
}

void help(QPainter& p) {
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x2d, 0x6c, 0xc0));
    p.drawEllipse(QPointF(16.5, 19), 7, 7);
    p.setPen(pen(Qt::white, 2));
    QPainterPath hook;
    hook.moveTo(14, 17);
    hook.cubicTo(14, 13.5, 19.5, 13.5, 19.5, 16.5);
    hook.cubicTo(19.5, 18.5, 16.5, 18.5, 16.5, 20.5);
    p.setBrush(Qt::NoBrush);
    p.drawPath(hook);
    p.drawPoint(QPointF(16.5, 23.5));
}

void note(QPainter& p, const QColor& colour) {
    p.setPen(pen(colour, 1.8));
    p.drawLine(QPointF(15, 24), QPointF(15, 12));
    p.drawLine(QPointF(21, 22), QPointF(21, 10.5));
    p.setPen(pen(colour, 2.6));
    p.drawLine(QPointF(15, 12), QPointF(21, 10.5));
    p.setPen(Qt::NoPen);
    p.setBrush(colour);
    p.drawEllipse(QPointF(12.8, 24), 2.6, 2.1);
    p.drawEllipse(QPointF(18.8, 22), 2.6, 2.1);
}

void markup(QPainter& p, const QColor& colour) {
    p.setPen(pen(colour, 2));
    p.setBrush(Qt::NoBrush);
    p.drawPolyline(QPolygonF({{13, 14}, {9.5, 18.5}, {13, 23}}));
    p.drawPolyline(QPolygonF({{20, 14}, {23.5, 18.5}, {20, 23}}));
    p.drawLine(QPointF(18, 13.5), QPointF(15, 23.5));
}

void folder(QPainter& p, bool open) {
    const QColor back(0xe0, 0xa8, 0x2e);
    const QColor front(0xf7, 0xc9, 0x4f);
    const QColor line(0xa2, 0x70, 0x12);
    polygon(p, {{3, 8}, {12, 8}, {14.5, 10.5}, {28, 10.5}, {28, 26}, {3, 26}}, back, line);
    if (open) {
        polygon(p, {{3, 26}, {7.5, 14.5}, {31, 14.5}, {27.5, 26}}, front, line);
    } else {
        p.setPen(pen(line, 1.4));
        p.setBrush(front);
        p.drawRoundedRect(QRectF(3, 13.5, 25, 12.5), 1.2, 1.2);
    }
}

void plusBadge(QPainter& p) {
    p.setPen(pen(Qt::white, 1.2));
    p.setBrush(QColor(0x2f, 0x9e, 0x44));
    p.drawEllipse(QPointF(24, 24), 7, 7);
    p.setPen(pen(Qt::white, 2.4));
    p.drawLine(QPointF(24, 20), QPointF(24, 28));
    p.drawLine(QPointF(20, 24), QPointF(28, 24));
}

void pencil(QPainter& p) {
    polygon(p, {{11, 27}, {12.5, 21}, {25, 8.5}, {29.5, 13}, {17, 25.5}}, QColor(0xf2, 0xb1, 0x22),
            QColor(0x8a, 0x5a, 0x0a), 1.3);
    polygon(p, {{11, 27}, {12.5, 21}, {17, 25.5}}, QColor(0xf5, 0xde, 0xb3),
            QColor(0x8a, 0x5a, 0x0a), 1.1);
    p.setPen(pen(QColor(0xd9, 0x4a, 0x4a), 2.4));
    p.drawLine(QPointF(24, 9.5), QPointF(28.5, 14));
}

void play(QPainter& p) {
    p.setPen(pen(QColor(0x1d, 0x7a, 0x33), 1.4));
    p.setBrush(QColor(0x32, 0xa8, 0x52));
    p.drawEllipse(QPointF(16, 16), 13, 13);
    polygon(p, {{12.5, 9.5}, {23.5, 16}, {12.5, 22.5}}, Qt::white, Qt::white, 1.2);
}

void stop(QPainter& p) {
    p.setPen(pen(QColor(0xa8, 0x1f, 0x1f), 1.4));
    p.setBrush(QColor(0xd9, 0x3b, 0x3b));
    p.drawEllipse(QPointF(16, 16), 13, 13);
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::white);
    p.drawRect(QRectF(11, 11, 10, 10));
}

void cross(QPainter& p) {
    p.setPen(pen(QColor(0xa8, 0x1f, 0x1f), 1.4));
    p.setBrush(QColor(0xd9, 0x3b, 0x3b));
    p.drawEllipse(QPointF(16, 16), 13, 13);
    p.setPen(pen(Qt::white, 3.2));
    p.drawLine(QPointF(11, 11), QPointF(21, 21));
    p.drawLine(QPointF(21, 11), QPointF(11, 21));
}

void floppy(QPainter& p) {
    polygon(p, {{4, 4}, {24, 4}, {28, 8}, {28, 28}, {4, 28}}, QColor(0x2d, 0x6c, 0xc0),
            QColor(0x1c, 0x48, 0x85));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0xe8, 0xee, 0xf6));
    p.drawRect(QRectF(9, 4.7, 13, 8));
    p.setBrush(QColor(0x1c, 0x48, 0x85));
    p.drawRect(QRectF(17.5, 6, 3, 5.5));
    p.setBrush(Qt::white);
    p.drawRoundedRect(QRectF(8, 17, 16, 10.3), 1, 1);
}

void titleMark(QPainter& p) {
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0xbf, 0xd9, 0xfb));
    p.drawRect(QRectF(3, 20, 26, 8));
    p.setPen(pen(QColor(0x23, 0x3b, 0x5c), 3));
    p.drawLine(QPointF(7, 5), QPointF(25, 5));
    p.drawLine(QPointF(16, 5), QPointF(16, 17));
    p.setPen(pen(QColor(0x2d, 0x6c, 0xc0), 1.6));
    p.drawLine(QPointF(6, 24), QPointF(26, 24));
}

void sortMark(QPainter& p) {
    p.setPen(pen(QColor(0x23, 0x3b, 0x5c), 1.8));
    p.setBrush(Qt::NoBrush);
    p.drawPolyline(QPolygonF({{3, 14}, {6.5, 4}, {10, 14}}));
    p.drawLine(QPointF(4.3, 10.5), QPointF(8.7, 10.5));
    p.drawPolyline(QPolygonF({{3.5, 18}, {10, 18}, {3.5, 28}, {10, 28}}));
    p.setPen(pen(QColor(0x2d, 0x6c, 0xc0), 2.4));
    p.drawLine(QPointF(21, 4), QPointF(21, 27));
    p.drawPolyline(QPolygonF({{15.5, 21.5}, {21, 27.5}, {26.5, 21.5}}));
}

void openOutside(QPainter& p) {
    p.setPen(pen(outline, 1.6));
    p.setBrush(QColor(0xfb, 0xfc, 0xfe));
    p.drawRoundedRect(QRectF(4, 8, 20, 20), 2, 2);
    p.setPen(pen(QColor(0x2d, 0x6c, 0xc0), 2.6));
    p.drawLine(QPointF(13, 19), QPointF(27, 5));
    p.drawPolyline(QPolygonF({{18.5, 4.5}, {27.5, 4.5}, {27.5, 13.5}}));
}

void sameLevel(QPainter& p) {
    p.setPen(pen(outline, 1.4));
    p.setBrush(QColor(0xd8, 0xe0, 0xea));
    p.drawRect(QRectF(3, 6, 9, 7));
    p.drawRect(QRectF(20, 6, 9, 7));
    p.setPen(pen(QColor(0x2d, 0x6c, 0xc0), 2.4));
    p.drawLine(QPointF(7.5, 17), QPointF(7.5, 24));
    p.drawLine(QPointF(7.5, 24), QPointF(24.5, 24));
    p.drawLine(QPointF(24.5, 24), QPointF(24.5, 16.5));
    p.drawPolyline(QPolygonF({{20.5, 19.5}, {24.5, 15.5}, {28.5, 19.5}}));
}

void batchMark(QPainter& p) {
    p.save();
    p.translate(3.5, -1.5);
    page(p);
    p.translate(-4.5, 2.5);
    page(p);
    textLines(p);
    p.restore();
    p.setPen(pen(Qt::white, 1.2));
    p.setBrush(QColor(0x2d, 0x6c, 0xc0));
    p.drawEllipse(QPointF(23.5, 23.5), 7.5, 7.5);
    polygon(p, {{21, 19.5}, {27.5, 23.5}, {21, 27.5}}, Qt::white, Qt::white, 1);
}

} // namespace morlevant::glyphs
