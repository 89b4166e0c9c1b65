#include "mainwindow/TreeImageList.h"

#include "mainwindow/IconGlyphs.h"
#include "mainwindow/PaintedIconEngine.h"

#include <QPainter>

namespace morlevant {

namespace {

using Drawing = PaintedIconEngine::Drawing;

Drawing onPage(Drawing mark) {
    return [mark = std::move(mark)](QPainter& p) {
        glyphs::page(p);
        mark(p);
    };
}

Drawing picture(QColor frame) {
    return onPage([frame](QPainter& p) { glyphs::picture(p, frame); });
}

Drawing note(QColor colour) {
    return onPage([colour](QPainter& p) { glyphs::note(p, colour); });
}

// The model keeps a second image for a selected node inside the same icon, which needs an
// icon made of pixmaps: render the drawing at the sizes a tree row asks for, at 1x and 2x.
QIcon pixmapIcon(const Drawing& drawing) {
    const QIcon painted = PaintedIconEngine::icon(drawing);
    QIcon icon;
    for (const int side : {16, 20, 24, 32, 40, 48, 64})
        icon.addPixmap(painted.pixmap(QSize(side, side), 1.0));
    return icon;
}

} // namespace

TreeImageList::TreeImageList() {
    const QList<Drawing> drawings = {
        nullptr,                           // 0: a node without an icon
        picture(QColor(0x2d, 0x6c, 0xc0)), // 1 .BMP
        onPage(glyphs::archive),           // 2 .ZIP
        glyphs::program,                   // 3 .EXE
        onPage(glyphs::help),              // 4 .CHM
        picture(QColor(0x2f, 0x8a, 0x44)), // 5 .JPG
        picture(QColor(0x8a, 0x4f, 0xc4)), // 6 .GIF
        note(QColor(0xd9, 0x6a, 0x1e)),    // 7 .MP3
        note(QColor(0x1e, 0x8a, 0x8a)),    // 8 .MID
        note(QColor(0xc0, 0x3a, 0x5a)),    // 9 .WAV
        onPage([](QPainter& p) { glyphs::markup(p, QColor(0xd9, 0x6a, 0x1e)); }), // 10 .HTM
        onPage(glyphs::textLines),                                                // 11 .TXT
        [](QPainter& p) { glyphs::folder(p, false); }, // 12 closed folder
        [](QPainter& p) { glyphs::folder(p, true); },  // 13 open folder
    };
    for (const Drawing& drawing : drawings)
        icons_.append(drawing ? pixmapIcon(drawing) : QIcon());
}

} // namespace morlevant
