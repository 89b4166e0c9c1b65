#pragma once

namespace morlevant {

// The task tree's images by index, the numbers a node carries in the model and the workspace
// file keeps. 1 to 11 are the file kinds of FileTypeList() in their order (".BMP" .. ".TXT"),
// so the kinds before `html` are the ones that are not text.
namespace treeImage {
enum Index : int {
    none = 0, // a task, or a file of an unknown kind
    bitmap,
    archive,
    program,
    helpFile,
    jpeg,
    gif,
    mp3,
    midi,
    wave,
    html,
    text,
    closedFolder, // a node holding others
    openFolder,   // the same, selected
};
} // namespace treeImage

} // namespace morlevant
