#include "mainwindow/icons/TreeImageList.h"

#include "mainwindow/icons/IconGlyphs.h"
#include "mainwindow/icons/PaintedIconEngine.h"
#include "workspace/TreeImage.h"

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
    const QList<std::pair<treeImage::Index, Drawing>> drawings = {
        {treeImage::bitmap, picture(QColor(0x2d, 0x6c, 0xc0))},
        {treeImage::archive, onPage(glyphs::archive)},
        {treeImage::program, glyphs::program},
        {treeImage::helpFile, onPage(glyphs::help)},
        {treeImage::jpeg, picture(QColor(0x2f, 0x8a, 0x44))},
        {treeImage::gif, picture(QColor(0x8a, 0x4f, 0xc4))},
        {treeImage::mp3, note(QColor(0xd9, 0x6a, 0x1e))},
        {treeImage::midi, note(QColor(0x1e, 0x8a, 0x8a))},
        {treeImage::wave, note(QColor(0xc0, 0x3a, 0x5a))},
        {treeImage::html, onPage([](QPainter& p) { glyphs::markup(p, QColor(0xd9, 0x6a, 0x1e)); })},
        {treeImage::text, onPage(glyphs::textLines)},
        {treeImage::closedFolder, [](QPainter& p) { glyphs::folder(p, false); }},
        {treeImage::openFolder, [](QPainter& p) { glyphs::folder(p, true); }},
    };
    icons_.resize(treeImage::openFolder + 1);
    for (const auto& [image, drawing] : drawings)
        icons_[image] = pixmapIcon(drawing);
}

} // namespace morlevant
