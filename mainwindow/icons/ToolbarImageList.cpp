#include "mainwindow/icons/ToolbarImageList.h"

#include "mainwindow/icons/IconGlyphs.h"
#include "mainwindow/icons/PaintedIconEngine.h"

#include <QPainter>

namespace morlevant {

namespace {

using Drawing = PaintedIconEngine::Drawing;

void newPage(QPainter& p) {
    glyphs::page(p);
    glyphs::plusBadge(p);
}

void openFolder(QPainter& p) {
    glyphs::folder(p, true);
}

void importFile(QPainter& p) {
    glyphs::page(p);
    glyphs::textLines(p);
    glyphs::plusBadge(p);
}

void addTask(QPainter& p) {
    glyphs::folder(p, false);
    glyphs::plusBadge(p);
}

void editTask(QPainter& p) {
    p.save();
    p.translate(-3, 0);
    glyphs::page(p);
    glyphs::textLines(p);
    p.restore();
    glyphs::pencil(p);
}

void showHtml(QPainter& p) {
    p.save();
    p.translate(-7, -10);
    p.scale(1.45, 1.45);
    glyphs::markup(p, QColor(0xd9, 0x6a, 0x1e));
    p.restore();
}

} // namespace

ToolbarImageList::ToolbarImageList() {
    const QList<std::pair<int, Drawing>> drawings = {
        {toolbarImage::newTask, newPage},
        {toolbarImage::openTask, openFolder},
        {toolbarImage::saveTask, glyphs::floppy},
        {toolbarImage::importFile, importFile},
        {toolbarImage::addTask, addTask},
        {toolbarImage::runTask, glyphs::play},
        {toolbarImage::deleteNode, glyphs::cross},
        {toolbarImage::setTitle, glyphs::titleMark},
        {toolbarImage::sortFiles, glyphs::sortMark},
        {toolbarImage::openIt, glyphs::openOutside},
        {toolbarImage::strictDrag, glyphs::sameLevel},
        {toolbarImage::showHtml, showHtml},
        {toolbarImage::editTask, editTask},
        {toolbarImage::stopRun, glyphs::stop},
    };
    for (const auto& [image, drawing] : drawings)
        icons_.insert(image, PaintedIconEngine::icon(drawing));
    // The faded twins of the buttons whose image tells whether they are available.
    const QList<std::pair<int, Drawing>> faded = {
        {toolbarImage::importFileOff, importFile},    {toolbarImage::addTaskOff, addTask},
        {toolbarImage::editTaskOff, editTask},        {toolbarImage::runTaskOff, glyphs::play},
        {toolbarImage::deleteNodeOff, glyphs::cross},
    };
    for (const auto& [image, drawing] : faded)
        icons_.insert(image, PaintedIconEngine::icon(drawing, true));
}

QIcon programIcon() {
    return PaintedIconEngine::icon(glyphs::batchMark);
}

} // namespace morlevant
