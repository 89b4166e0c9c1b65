#pragma once

#include <QString>
#include <QStringList>
#include <array>

namespace morlevant {

class SettingsStore;

// One of the four History entries of the File menu (`mLastFile` 0 to 3).
struct RecentEntry {
    QString caption;
    bool visible = false;
    bool enabled = false;
};
using RecentMenu = std::array<RecentEntry, 4>;

// The last four workspaces, kept as a ring of four slots in the settings store ("FirstFile"
// names the newest slot, "0File" to "3File" hold the paths). Every change returns the four
// menu entries as they must now look.
class RecentFiles final {
public:
    static constexpr int notFound = 5;

    explicit RecentFiles(SettingsStore& store);

    RecentMenu ShowRecentFiles() const;
    // Puts a path that is not in the menu into a fresh slot, as the newest entry.
    RecentMenu AddRecentFile(const QString& path);
    // Menu position (0 to 3) of the entry whose path equals path exactly, or notFound.
    int FindRecentFile(const QString& path) const;
    // Makes the entry at the given menu position the newest.
    RecentMenu UpdateRecentFiles(int position);
    // What opening or saving a workspace does: move its entry to the front, or add it.
    RecentMenu enterRecentFile(const QString& path);

    // The path an entry's caption holds ("&1 " + path).
    static QString pathOfCaption(const QString& caption);

private:
    int firstSlot() const;
    QString slotPath(int slot) const;
    // The paths the menu shows, newest first.
    QStringList paths() const;

    SettingsStore& store_;
};

} // namespace morlevant
