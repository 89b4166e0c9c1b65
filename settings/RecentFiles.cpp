#include "settings/RecentFiles.h"

#include "settings/SettingsStore.h"

namespace morlevant {

namespace {

constexpr int slotCount = 4;
const QString firstKey = QStringLiteral("FirstFile");

QString slotKey(int slot) {
    return QString::number(slot) + "File";
}

int previousSlot(int slot) {
    return (slot + slotCount - 1) % slotCount;
}

RecentMenu emptyMenu() {
    RecentMenu menu;
    menu[0] = {QStringLiteral("no history"), true, false};
    return menu;
}

} // namespace

RecentFiles::RecentFiles(SettingsStore& store) : store_(store) {}

int RecentFiles::firstSlot() const {
    // A value that is no slot number (edited by hand) counts as slot 0, so the ring stays four
    // slots wide.
    bool ok = false;
    const int first = store_.value(firstKey, "0").trimmed().toInt(&ok);
    return ok && first >= 0 && first < slotCount ? first : 0;
}

QString RecentFiles::slotPath(int slot) const {
    return store_.value(slotKey(slot));
}

QStringList RecentFiles::paths() const {
    // Newest first, stopping at the first empty slot: a hole hides the older entries behind it.
    QStringList paths;
    int slot = firstSlot();
    for (QString path = slotPath(slot); paths.size() < slotCount && !path.isEmpty();
         path = slotPath(slot)) {
        paths.append(path);
        slot = (slot + 1) % slotCount;
    }
    return paths;
}

RecentMenu RecentFiles::ShowRecentFiles() const {
    const QStringList shown = paths();
    if (shown.isEmpty())
        return emptyMenu();
    RecentMenu menu;
    for (int i = 0; i < shown.size(); ++i)
        menu[i] = {"&" + QString::number(i + 1) + " " + shown[i], true, true};
    return menu;
}

RecentMenu RecentFiles::AddRecentFile(const QString& path) {
    if (path.trimmed().isEmpty())
        return ShowRecentFiles();
    // The new entry takes the slot before the newest, which in a full ring holds the oldest.
    const int slot = previousSlot(firstSlot());
    store_.setValue(firstKey, QString::number(slot));
    store_.setValue(slotKey(slot), path);
    return ShowRecentFiles();
}

int RecentFiles::FindRecentFile(const QString& path) const {
    const qsizetype position = paths().indexOf(path);
    return position < 0 ? notFound : static_cast<int>(position);
}

RecentMenu RecentFiles::UpdateRecentFiles(int position) {
    const int first = firstSlot();
    if (position == 3) {
        // Only a full ring shows a fourth entry, and its slot is the one before the newest:
        // moving the newest mark there makes it the newest without moving any text.
        store_.setValue(firstKey, QString::number(previousSlot(first)));
    } else if (position == 1 || position == 2) {
        // Shift the newer entries one slot towards the older end, then put the chosen path
        // into the newest slot.
        const int slot = (first + position) % slotCount;
        const QString chosen = slotPath(slot);
        for (int current = slot; current != first;) {
            const int previous = previousSlot(current);
            const QString path = slotPath(previous);
            if (path.isEmpty())
                break;
            store_.setValue(slotKey(current), path);
            current = previous;
        }
        store_.setValue(slotKey(first), chosen);
    }
    return ShowRecentFiles();
}

RecentMenu RecentFiles::enterRecentFile(const QString& path) {
    const int position = FindRecentFile(path);
    return position == notFound ? AddRecentFile(path) : UpdateRecentFiles(position);
}

QString RecentFiles::pathOfCaption(const QString& caption) {
    return caption.mid(3);
}

} // namespace morlevant
