#pragma once

#include <QWidget>

class QTreeWidget;

namespace morlevant {

class Prompts;

// The template library panel, shown by "OpenTemplate": task templates to browse and pick.
// Its rows live only while the editor is open; picking a template changes nothing in the
// task's pages.
class TemplateLibrary final : public QWidget {
    Q_OBJECT

public:
    explicit TemplateLibrary(Prompts& prompts, QWidget* parent = nullptr);

    // Adds the three sample templates again at the end of the library and shows the panel.
    void open();

private:
    void addSelected();
    void removeSelected(QTreeWidget* list);

    Prompts& prompts_;
    QTreeWidget* library_;  // list_temp
    QTreeWidget* selected_; // list_select
};

} // namespace morlevant
