#pragma once

#include <QWidget>

class QLabel;

namespace morlevant {

class SplitBar;
class TaskTreeView;
class TextViewer;

// The window's working area: the task tree on the left, the bar `picSplit`, and on the right
// the caption label `lbCaption` above the viewer `txtMain`. The panes are placed by
// ControlSize from the bar's Left; toolbar and status bar lie outside this area.
class MainPane final : public QWidget {
    Q_OBJECT

public:
    explicit MainPane(QWidget* parent = nullptr);

    TaskTreeView* tvMain() const { return tvMain_; }
    SplitBar* picSplit() const { return picSplit_; }
    QLabel* lbCaption() const { return lbCaption_; }
    TextViewer* txtMain() const { return txtMain_; }

    // "Drag": the panes follow the bar while it is dragged, not only when it is let go.
    void setLiveDrag(bool live);

    void ControlSize();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    // Places tree, label and viewer for a bar at left twips.
    void placePanes(float left);
    void placeBar(float left);

    TaskTreeView* tvMain_;
    SplitBar* picSplit_;
    QLabel* lbCaption_;
    TextViewer* txtMain_;
    bool liveDrag_ = false;
};

} // namespace morlevant
