#pragma once

#include "tests/support/TempDir.h"

#include <QByteArray>
#include <QString>

namespace morlevant::testing {

// Points the user's data and configuration folders (XDG_DATA_HOME, XDG_CONFIG_HOME) at a
// temporary folder for the life of the object, so that nothing touches the real ones.
class DesktopFolders {
public:
    DesktopFolders() {
        qputenv("XDG_DATA_HOME", QByteArray::fromStdString(dir.file("data")));
        qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(dir.file("config")));
    }
    ~DesktopFolders() {
        qunsetenv("XDG_DATA_HOME");
        qunsetenv("XDG_CONFIG_HOME");
    }
    DesktopFolders(const DesktopFolders&) = delete;
    DesktopFolders& operator=(const DesktopFolders&) = delete;

    QString path(const std::string& name) const { return QString::fromStdString(dir.file(name)); }

    TempDir dir;
};

} // namespace morlevant::testing
