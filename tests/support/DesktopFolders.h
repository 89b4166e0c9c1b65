#pragma once

#include "tests/support/TempDir.h"

#include <QByteArray>
#include <QString>

namespace morlevant::testing {

// Points the user's data and configuration folders (XDG_DATA_HOME, XDG_CONFIG_HOME) and the
// system's data folders (XDG_DATA_DIRS) at "data", "config" and "system" in a temporary folder
// for the life of the object, so that nothing touches the real ones and nothing installed on
// this machine is seen.
class DesktopFolders {
public:
    DesktopFolders() {
        qputenv("XDG_DATA_HOME", QByteArray::fromStdString(dir.file("data")));
        qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(dir.file("config")));
        qputenv("XDG_DATA_DIRS", QByteArray::fromStdString(dir.file("system")));
    }
    ~DesktopFolders() {
        qunsetenv("XDG_DATA_HOME");
        qunsetenv("XDG_CONFIG_HOME");
        qunsetenv("XDG_DATA_DIRS");
    }
    DesktopFolders(const DesktopFolders&) = delete;
    DesktopFolders& operator=(const DesktopFolders&) = delete;

    QString path(const std::string& name) const { return QString::fromStdString(dir.file(name)); }

    TempDir dir;
};

} // namespace morlevant::testing
