#pragma once

#include <QDialog>

namespace morlevant {

// Stands where the task editor opens: it names the task and says that the editor's pages come
// with a later version. Neither OK nor Cancel writes the task's settings, so the task stays
// unedited until the editor itself can fill them in.
class TaskEditorDialog final : public QDialog {
    Q_OBJECT

public:
    TaskEditorDialog(const QString& taskPath, QWidget* parent = nullptr);

    // Shows the dialog modally; true when the user pressed OK.
    static bool edit(QWidget* parent, const QString& taskPath);
};

} // namespace morlevant
