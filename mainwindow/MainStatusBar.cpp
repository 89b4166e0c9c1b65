#include "mainwindow/MainStatusBar.h"

#include <QLabel>
#include <QProgressBar>

namespace morlevant {

MainStatusBar::MainStatusBar(QWidget* parent)
    : QStatusBar(parent), progress_(new QProgressBar(this)), path_(new QLabel(this)),
      caret_(new QLabel(this)), feedback_(new QLabel(this)) {
    setObjectName(QStringLiteral("sbMain"));
    setSizeGripEnabled(false);
    progress_->setObjectName(QStringLiteral("ProgressBar1"));
    progress_->setRange(0, 1);
    progress_->setValue(0);
    progress_->setTextVisible(false);
    progress_->setFixedWidth(140);
    // The bar in the program's blue (red 0, green 100, blue 233), whatever the style's colour.
    QPalette bar = progress_->palette();
    bar.setColor(QPalette::Highlight, QColor(0, 100, 233));
    progress_->setPalette(bar);
    path_->setObjectName(QStringLiteral("sbPath"));
    path_->setTextFormat(Qt::PlainText);
    path_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    caret_->setObjectName(QStringLiteral("sbCaret"));
    caret_->setMinimumWidth(150);
    feedback_->setObjectName(QStringLiteral("Feedback"));
    feedback_->setText(QStringLiteral("<a href=\"feedback\">Feedback</a>"));
    feedback_->setToolTip(QStringLiteral("Send a mail to the maker"));
    connect(feedback_, &QLabel::linkActivated, this, &MainStatusBar::feedbackClicked);
    addWidget(progress_);
    // The wide panel takes whatever width the others leave.
    addWidget(path_, 1);
    addPermanentWidget(caret_);
    addPermanentWidget(feedback_);
}

void MainStatusBar::setPath(const QString& path) {
    path_->setText(path);
}

QString MainStatusBar::path() const {
    return path_->text();
}

void MainStatusBar::setCaret(const QString& text) {
    caret_->setText(text);
}

} // namespace morlevant
