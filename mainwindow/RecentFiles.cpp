#include "RecentFiles.h"

#include "SettingsStore.h"

namespace morlevant {

RecentFiles::RecentFiles(SettingsStore& store) : store_(store) {}

RecentMenu RecentFiles::ShowRecentFiles() const {
    return {};
}

RecentMenu RecentFiles::AddRecentFile(const QString&) {
    return {};
}

int RecentFiles::FindRecentFile(const QString&) const {
    return notFound;
}

RecentMenu RecentFiles::UpdateRecentFiles(int) {
    return {};
}

RecentMenu RecentFiles::ClearRecentFiles() {
    return {};
}

RecentMenu RecentFiles::enterRecentFile(const QString&) {
    return {};
}

QString RecentFiles::pathOfCaption(const QString& caption) {
    return caption.mid(3);
}

} // namespace morlevant
