#pragma once

#include <string>
#include <vector>

class QDialog;
class QWidget;

namespace morlevant {

struct TaskPageSettings;

// Rows of each file a preview works.
inline constexpr std::size_t previewRows = 200;

// Works `settings` on the first rows of `file` (a merge: of each of `files`, in order) with the
// run's own pages, writing nothing beside the sources, and shows what the run would write in a
// window of its own: the source and result rows side by side with the changed rows marked, the
// pieces of a divide, the files of a merge, or the run's error. The window closes itself when
// the user closes it; it is returned for those who look at it.
QDialog* showTaskPreview(QWidget* parent, const TaskPageSettings& settings,
                         const std::vector<std::string>& files, const std::string& file);

} // namespace morlevant
