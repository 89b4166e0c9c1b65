#pragma once

#include "mainwindow/TaskLauncher.h"

namespace morlevant {

class Prompts;
class SettingsStore;
class Shell;

// What the main window is given rather than making itself: the prompts and shell it talks
// through, the settings store, and how the task editor is opened. Tests give scripted ones.
struct WindowContext {
    Prompts& prompts;
    Shell& shell;
    SettingsStore& settings;
    TaskLauncher::EditorOpener openTaskEditor;
};

} // namespace morlevant
