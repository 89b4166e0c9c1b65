#pragma once

#include "mainwindow/MainMenus.h"
#include "mainwindow/MainToolBar.h"
#include "mainwindow/frmCorvellum.h"
#include "settings/SettingsStore.h"
#include "taskdef/InstallLayout.h"
#include "tests/support/EditorDriver.h"
#include "tests/support/RecordingShell.h"
#include "tests/support/ScriptedPrompts.h"
#include "tests/support/TempDir.h"
#include "tests/support/TreeText.h"

#include <QAction>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

namespace morlevant::testing {

// A main window over a temporary program folder, prepared as the program's start-up prepares
// it, and a temporary settings file, with scripted prompts and a recording shell. The task editor
// only records where it was opened, unless a test gives `editorScript`: then the real editor opens
// (shown, not modal) and the script fills it in as a user would.
class WindowFixture : public ::testing::Test {
protected:
    void start(const QString& commandLine = {}) {
        createMergeFolder(home.path().string());
        const auto openEditor = [this](QWidget* parent, const QString& taskPath,
                                       const TaskPageSettings* shown,
                                       const std::vector<std::string>& files) {
            editorOpened.append(taskPath);
            if (!editorScript)
                return true;
            TaskEditorDialog editor(prompts, taskPath, parent);
            if (shown != nullptr)
                editor.showSettings(*shown);
            editor.setPreviewFiles(files);
            editor.show();
            editorScript(EditorDriver(editor));
            return editor.result() == QDialog::Accepted;
        };
        window = std::make_unique<frmCorvellum>(
            WindowContext{prompts, shell, store, openEditor,
                          QString::fromStdString(home.path().string()), runJobs});
        window->startUp(commandLine);
    }

    QString homeFile(const std::string& name) const {
        return QString::fromStdString(home.file(name));
    }
    // A file under the program folder with the given bytes.
    QString makeFile(const std::string& name, const std::string& bytes) const {
        writeBytes(home.file(name), bytes);
        return homeFile(name);
    }
    // A file under the program folder with the given bytes, as a node of the start-up task,
    // selected and so shown.
    QString showFile(const QString& caption, const std::string& name, const std::string& bytes,
                     treeImage::Index image = treeImage::text) const {
        const QString path = makeFile(name, bytes);
        window->model().appendNode(node({"My Batch Task"}), caption, path, image);
        select({"My Batch Task", caption});
        return path;
    }
    MainMenus& menus() const { return window->menus(); }
    MainToolBar& toolbar() const { return *window->tbMain(); }
    QString tree() const { return treeText(window->model()); }
    QStandardItem* node(const QStringList& captions) const {
        return find(window->model(), captions);
    }
    void select(const QStringList& captions) const { window->selectNode(node(captions)); }
    void click(ToolbarButton button) const { toolbar().action(button)->trigger(); }
    // A run works on threads of its own: the window's events turn until it has ended.
    void waitForRun() const {
        while (window->isRunning())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    TempDir home;
    SettingsStore store{QString::fromStdString(home.file("settings.ini"))};
    ScriptedPrompts prompts;
    RecordingShell shell;
    QStringList editorOpened;
    std::function<void(const EditorDriver&)> editorScript;
    std::unique_ptr<frmCorvellum> window;
    int runJobs = 0; // files a run works at once; 0: the machine's cores
};

} // namespace morlevant::testing
