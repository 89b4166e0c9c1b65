#pragma once

#include <QWidget>

namespace morlevant {

// The bar `picSplit` between the task tree and the viewer. Its Left, in twips, is the split
// position kept between runs. Dragging it moves it between 1000 twips from the left and 2000
// twips from the window's right edge; whether the panes follow at once or only when the bar is
// released is the owner's choice ("Drag").
class SplitBar final : public QWidget {
    Q_OBJECT

public:
    static constexpr float minimumLeft = 1000;
    static constexpr float rightMargin = 2000;

    explicit SplitBar(QWidget* parent = nullptr);

    float Left() const { return left_; }
    void setLeft(float twips);
    // Moves the bar by dx twips within its limits, as a drag step does; dx 0 only applies the
    // limits.
    void moveBy(float dx);
    void setLiveDrag(bool live) { liveDrag_ = live; }

signals:
    // During a drag: the bar has a new Left.
    void moved(float left);
    // The drag ended.
    void released();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void showDragging(bool dragging);

    float left_ = 2700;
    float origin_ = 0;
    bool liveDrag_ = false;
};

} // namespace morlevant
