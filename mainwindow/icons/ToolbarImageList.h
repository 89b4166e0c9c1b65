#pragma once

#include <QHash>
#include <QIcon>

namespace morlevant {

// Indices of the toolbar's images. The buttons from importFile to deleteNode (see
// ToolbarButton) show that their command is available by carrying their first image and that it
// is not by its faded twin ("Off"); the click handler tests the image, so these numbers are part
// of the toolbar's behaviour.
namespace toolbarImage {
inline constexpr int newTask = 1;
inline constexpr int openTask = 2;
inline constexpr int saveTask = 3;
inline constexpr int importFile = 5;
inline constexpr int addTask = 6;
inline constexpr int runTask = 8;
inline constexpr int deleteNode = 9;
inline constexpr int setTitle = 10;
inline constexpr int sortFiles = 11;
inline constexpr int openIt = 12;
inline constexpr int strictDrag = 13;
inline constexpr int showHtml = 14;
inline constexpr int editTask = 15;
inline constexpr int stopRun = 16; // beside the positions, on the "&Stop" command
inline constexpr int importFileOff = 20;
inline constexpr int addTaskOff = 21;
inline constexpr int editTaskOff = 22;
inline constexpr int runTaskOff = 23;
inline constexpr int deleteNodeOff = 24;
} // namespace toolbarImage

class ToolbarImageList final {
public:
    ToolbarImageList();

    QIcon icon(int image) const { return icons_.value(image); }

private:
    QHash<int, QIcon> icons_;
};

// The program's own icon: a stack of pages with a run mark.
QIcon programIcon();

} // namespace morlevant
