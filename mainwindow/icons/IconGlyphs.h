#pragma once

#include <QColor>

class QPainter;

// The drawings behind the program's icons, each on a 32 x 32 canvas. Pages, folders and
// marks are combined by the tree's and the toolbar's image lists.
namespace morlevant::glyphs {

void page(QPainter& p);
void textLines(QPainter& p);
void picture(QPainter& p, const QColor& frame);
void archive(QPainter& p);
void program(QPainter& p);
void help(QPainter& p);
void note(QPainter& p, const QColor& colour);
void markup(QPainter& p, const QColor& colour);
void folder(QPainter& p, bool open);
void plusBadge(QPainter& p);
void pencil(QPainter& p);
void play(QPainter& p);
void cross(QPainter& p);
void stop(QPainter& p);
void floppy(QPainter& p);
void titleMark(QPainter& p);
void sortMark(QPainter& p);
void openOutside(QPainter& p);
void sameLevel(QPainter& p);
void batchMark(QPainter& p);

} // namespace morlevant::glyphs
