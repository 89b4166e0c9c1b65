#pragma once

#include <QString>

namespace morlevant {

class SettingsStore;

// The preferences kept between runs, as plain values the window applies. The initial values
// are those of a fresh user.
struct UserSettings {
    enum WindowState { Normal = 0, Minimised = 1, Maximised = 2 };

    QString fontName = QStringLiteral("宋体"); // viewer font
    double fontSize = 12;                      // points
    bool fontBold = false;
    bool fontItalic = false;
    bool fontUnderline = false;
    bool addFileInSub = true;  // mnuAFSon "Add File In Sub"
    bool showHtml = true;      // mnuHtml "Show Html"
    bool sameLevelDrag = true; // mnuSun "Drag in the same level"
    bool liveDrag = false;     // mnuDrag "Drag": panes follow the splitter while dragging
    // mnuEditWithSettings: "&Edit Task" shows the task's settings rather than emptying them.
    bool editWithSettings = false;
    QString BOIPath;
    QString DataPath;   // folder under which task settings files live
    float split = 2700; // splitter position in twips
    QString defBrowse;  // program chosen under "&Choose exploer"
    int windowState = Maximised;
    QString tempFilePath; // file for tag-stripped HTML; computed, never stored

    bool operator==(const UserSettings&) const = default;
};

// Reads every setting into settings. A missing key gives its default (the folders default to
// programFolder); a value that cannot be used leaves the field as it was. A stored minimised
// window state is not applied, so the caller should put its current state in windowState first.
void LoadSet(const SettingsStore& store, UserSettings& settings, const QString& programFolder);

// Writes every setting, and the process's working directory as the last directory.
void SaveSet(SettingsStore& store, const UserSettings& settings);

} // namespace morlevant
