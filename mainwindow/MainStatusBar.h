#pragma once

#include <QStatusBar>

class QLabel;
class QProgressBar;

namespace morlevant {

// The status bar `sbMain`: the run's progress bar `ProgressBar1`, the wide panel with the
// selected node's file, the viewer's caret position, and "Feedback", which starts a mail to
// the maker.
class MainStatusBar final : public QStatusBar {
    Q_OBJECT

public:
    explicit MainStatusBar(QWidget* parent = nullptr);

    QProgressBar* ProgressBar1() const { return progress_; }
    void setPath(const QString& path);
    QString path() const;
    void setCaret(const QString& text);

signals:
    void feedbackClicked();

private:
    QProgressBar* progress_;
    QLabel* path_;
    QLabel* caret_;
    QLabel* feedback_;
};

} // namespace morlevant
