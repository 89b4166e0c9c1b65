#pragma once

#include "mainwindow/TaskLauncher.h"

namespace morlevant {

class Prompts;
class SettingsStore;
class Shell;

// What the main window is given rather than making itself: the prompts and shell it talks
// through, the settings store, how the task editor is opened, and the program folder (resolved
// once at start-up, its "outcome/merge" made). Tests give scripted ones and a folder of theirs.
struct WindowContext {
    Prompts& prompts;
    Shell& shell;
    SettingsStore& settings;
    TaskLauncher::EditorOpener openTaskEditor;
    QString programFolder;
    // Files a run works at once; 0 for as many as the machine has cores.
    int runJobs = 0;
};

} // namespace morlevant
