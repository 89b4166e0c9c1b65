#include "TreeImageList.h"

#include "IconGlyphs.h"
#include "PaintedIconEngine.h"

#include <QPainter>

namespace morlevant {

namespace {

using Mark = std::function<void(QPainter&)>;

QIcon onPage(Mark mark) {
    return PaintedIconEngine::icon([mark = std::move(mark)](QPainter& p) {
        glyphs::page(p);
        if (mark)
            mark(p);
    });
}

QIcon picture(QColor frame) {
    return onPage([frame](QPainter& p) { glyphs::picture(p, frame); });
}

QIcon note(QColor colour) {
    return onPage([colour](QPainter& p) { glyphs::note(p, colour); });
}

} // namespace

TreeImageList::TreeImageList() {
    icons_ = {
        onPage(nullptr),                                                          // 0 unknown
        picture(QColor(0x2d, 0x6c, 0xc0)),                                        // 1 .BMP
        onPage(glyphs::archive),                                                  // 2 .ZIP
        PaintedIconEngine::icon(glyphs::program),                                 // 3 .EXE
        onPage(glyphs::help),                                                     // 4 .CHM
        picture(QColor(0x2f, 0x8a, 0x44)),                                        // 5 .JPG
        picture(QColor(0x8a, 0x4f, 0xc4)),                                        // 6 .GIF
        note(QColor(0xd9, 0x6a, 0x1e)),                                           // 7 .MP3
        note(QColor(0x1e, 0x8a, 0x8a)),                                           // 8 .MID
        note(QColor(0xc0, 0x3a, 0x5a)),                                           // 9 .WAV
        onPage([](QPainter& p) { glyphs::markup(p, QColor(0xd9, 0x6a, 0x1e)); }), // 10 .HTM
        onPage(glyphs::textLines),                                                // 11 .TXT
        PaintedIconEngine::icon([](QPainter& p) { glyphs::folder(p, false); }),   // 12
        PaintedIconEngine::icon([](QPainter& p) { glyphs::folder(p, true); }),    // 13
    };
}

const QIcon& TreeImageList::icon(int image) const {
    return icons_.at(image >= 0 && image < icons_.size() ? image : 0);
}

} // namespace morlevant
