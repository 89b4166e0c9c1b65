#include "mainwindow/MainPane.h"

#include "mainwindow/SplitBar.h"
#include "mainwindow/TaskTreeView.h"
#include "mainwindow/Twips.h"
#include "mainwindow/viewer/TextViewer.h"

#include <QLabel>

namespace morlevant {

namespace {

constexpr int barWidth = 5;     // pixels
constexpr int overlap = 1;      // the viewer starts one pixel under the bar's right edge
constexpr int labelInset = 1;   // the label sits one pixel right of the viewer's edge
constexpr int labelShorter = 4; // and ends four pixels before the viewer's right edge
constexpr int labelGap = 3;     // between label and viewer

} // namespace

MainPane::MainPane(QWidget* parent)
    : QWidget(parent), tvMain_(new TaskTreeView(this)), picSplit_(new SplitBar(this)),
      lbCaption_(new QLabel(QStringLiteral("Title"), this)), txtMain_(new TextViewer(this)) {
    lbCaption_->setObjectName(QStringLiteral("lbCaption"));
    lbCaption_->setTextFormat(Qt::PlainText);
    QFont bold = lbCaption_->font();
    bold.setBold(true);
    lbCaption_->setFont(bold);
    picSplit_->resize(barWidth, 0);
    connect(picSplit_, &SplitBar::moved, this, [this](float left) {
        if (liveDrag_)
            placePanes(left);
        placeBar(left);
    });
    connect(picSplit_, &SplitBar::released, this, &MainPane::ControlSize);
}

void MainPane::setLiveDrag(bool live) {
    liveDrag_ = live;
    picSplit_->setLiveDrag(live);
}

void MainPane::resizeEvent(QResizeEvent*) {
    ControlSize();
}

void MainPane::ControlSize() {
    placeBar(picSplit_->Left());
    placePanes(picSplit_->Left());
}

void MainPane::placeBar(float left) {
    picSplit_->setGeometry(twips::toPixels(left), 0, barWidth, height());
}

void MainPane::placePanes(float left) {
    // The area has no frame of its own, so the viewer reaches the right edge.
    const int x = twips::toPixels(left);
    tvMain_->setGeometry(0, 0, x, height());
    const int viewerLeft = x + barWidth - overlap;
    const int viewerWidth = std::max(0, width() - viewerLeft);
    const int labelHeight = lbCaption_->sizeHint().height();
    lbCaption_->setGeometry(viewerLeft + labelInset, 0, std::max(0, viewerWidth - labelShorter),
                            labelHeight);
    txtMain_->setGeometry(viewerLeft, labelHeight + labelGap, viewerWidth,
                          std::max(0, height() - labelHeight - labelGap));
}

} // namespace morlevant
