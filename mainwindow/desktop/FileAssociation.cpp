#include "mainwindow/desktop/FileAssociation.h"

#include "mainwindow/desktop/MimeAppsList.h"
#include "platform/Shell.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSettings>
#include <QStandardPaths>
#include <algorithm>

namespace morlevant {

namespace {

const QString defaults = QString::fromLatin1(MimeAppsList::defaultApplications);
const QString removed = QString::fromLatin1(MimeAppsList::removedAssociations);

QString type() {
    return QString::fromLatin1(FileAssociation::mimeType);
}

QString userFolder(QStandardPaths::StandardLocation location) {
    return QStandardPaths::writableLocation(location);
}

void writeText(const QString& path, const QString& text) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 || !file.commit())
        throw FileAssociationError(QStringLiteral("Cannot write %1: %2")
                                       .arg(QDir::toNativeSeparators(path), file.errorString()));
}

void removeFile(const QString& path) {
    QFile file(path);
    if (file.exists() && !file.remove())
        throw FileAssociationError(QStringLiteral("Cannot remove %1: %2")
                                       .arg(QDir::toNativeSeparators(path), file.errorString()));
}

QString readText(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// One argument of a desktop entry's Exec key: quoted when it holds a reserved character, and
// then escaped twice, once for the quoting and once for the key's string value.
QString execArgument(const QString& argument) {
    static const QString reserved = QStringLiteral(" \t\n\"'\\><~|&;$*?#()`");
    QString escaped = argument;
    escaped.replace(u'%', QStringLiteral("%%"));
    if (std::none_of(argument.begin(), argument.end(),
                     [](QChar c) { return reserved.contains(c); }))
        return escaped;
    QString quoted;
    for (const QChar c : escaped) {
        if (c == u'"' || c == u'`' || c == u'$' || c == u'\\')
            quoted += u'\\';
        quoted += c;
    }
    quoted.replace(u'\\', QStringLiteral("\\\\"));
    return u'"' + quoted + u'"';
}

#ifdef Q_OS_WIN
// The classes of the current user, where a user may record file types without being an
// administrator; a key's default value is its "Default" entry.
QSettings userClasses() {
    return QSettings(QStringLiteral("HKEY_CURRENT_USER\\Software\\Classes"),
                     QSettings::NativeFormat);
}
#endif

} // namespace

FileAssociation::FileAssociation(Shell& shell, QString programPath)
    : shell_(shell), programPath_(std::move(programPath)) {}

QString FileAssociation::message(Outcome outcome) {
    switch (outcome) {
    case Outcome::AlreadyMatched:
        return QStringLiteral("*.tsk file matched");
    case Outcome::Matched:
        return QStringLiteral("FileMatch succeed，you can open it directly next time!");
    case Outcome::Removed:
        return QStringLiteral("Cancel file match！");
    case Outcome::NotMatched:
        break;
    }
    return QStringLiteral("File no match！");
}

#ifdef Q_OS_WIN

FileAssociation::Outcome FileAssociation::associate() {
    QSettings classes = userClasses();
    if (classes.childGroups().contains(QStringLiteral(".tsk"), Qt::CaseInsensitive))
        return Outcome::AlreadyMatched;
    const QString program = QDir::toNativeSeparators(programPath_);
    classes.setValue(QStringLiteral(".tsk/Default"), QStringLiteral("Corvellum"));
    classes.setValue(QStringLiteral("Corvellum/Default"), QStringLiteral("Corvellum Document"));
    classes.setValue(QStringLiteral("Corvellum/DefaultIcon/Default"), program + " ,0");
    classes.setValue(QStringLiteral("Corvellum/shell/open/command/Default"), program + " %1");
    classes.sync();
    if (classes.status() != QSettings::NoError)
        throw FileAssociationError(QStringLiteral("Cannot write the .tsk file type"));
    return Outcome::Matched;
}

FileAssociation::Outcome FileAssociation::remove() {
    QSettings classes = userClasses();
    if (!classes.childGroups().contains(QStringLiteral(".tsk"), Qt::CaseInsensitive))
        return Outcome::NotMatched;
    classes.remove(QStringLiteral(".tsk"));
    classes.remove(QStringLiteral("Corvellum"));
    classes.sync();
    if (classes.status() != QSettings::NoError)
        throw FileAssociationError(QStringLiteral("Cannot remove the .tsk file type"));
    return Outcome::Removed;
}

#else

FileAssociation::Outcome FileAssociation::associate() {
    const QString list = readText(mimeAppsPath());
    // A default the user has, ours or another program's, is left as it is.
    if (!MimeAppsList::entries(list, defaults, type()).isEmpty())
        return Outcome::AlreadyMatched;
    const bool useInstalled = installed();
    const QString entry = QString::fromLatin1(useInstalled ? installedEntry : userEntry);
    if (!useInstalled) {
        writeText(userEntryPath(), desktopEntry());
        writeText(userPackagePath(), mimePackage());
        refreshDesktop();
    }
    writeText(mimeAppsPath(),
              MimeAppsList::withEntry(MimeAppsList::withoutEntry(list, removed, type(), entry),
                                      defaults, type(), entry));
    return Outcome::Matched;
}

FileAssociation::Outcome FileAssociation::remove() {
    const QString before = readText(mimeAppsPath());
    QString list = before;
    for (const char* entry : {installedEntry, userEntry})
        list = MimeAppsList::withoutEntry(list, defaults, type(), QString::fromLatin1(entry));
    // An installed entry offers itself for the type without any default: only a removed
    // association stops it.
    const QString installedName = QString::fromLatin1(installedEntry);
    if (installed() && !MimeAppsList::entries(list, removed, type()).contains(installedName))
        list = MimeAppsList::withEntry(list, removed, type(), installedName);
    const bool ownFiles =
        QFileInfo::exists(userEntryPath()) || QFileInfo::exists(userPackagePath());
    if (list == before && !ownFiles)
        return Outcome::NotMatched;

    if (ownFiles) {
        removeFile(userPackagePath());
        removeFile(userEntryPath());
        refreshDesktop();
    }
    if (list != before)
        list.isEmpty() ? removeFile(mimeAppsPath()) : writeText(mimeAppsPath(), list);
    return Outcome::Removed;
}

bool FileAssociation::installed() {
    const auto find = [](const QString& name) {
        return !QStandardPaths::locate(QStandardPaths::GenericDataLocation, name).isEmpty();
    };
    return find(QStringLiteral("applications/") + QString::fromLatin1(installedEntry)) &&
           find(QStringLiteral("mime/packages/") + QString::fromLatin1(installedPackage));
}

#endif

void FileAssociation::refreshDesktop() {
    // Desktops without these tools read the folders directly.
    const QString data = userFolder(QStandardPaths::GenericDataLocation);
    shell_.runTool(QStringLiteral("update-mime-database"), {data + "/mime"});
    shell_.runTool(QStringLiteral("update-desktop-database"), {data + "/applications"});
}

QString FileAssociation::userPackagePath() {
    return userFolder(QStandardPaths::GenericDataLocation) + "/mime/packages/" +
           QString::fromLatin1(userPackage);
}

QString FileAssociation::userEntryPath() {
    return userFolder(QStandardPaths::GenericDataLocation) + "/applications/" +
           QString::fromLatin1(userEntry);
}

QString FileAssociation::mimeAppsPath() {
    return userFolder(QStandardPaths::GenericConfigLocation) + "/mimeapps.list";
}

QString FileAssociation::mimePackage() {
    return QStringLiteral(
               "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
               "<mime-info xmlns=\"http://www.freedesktop.org/standards/shared-mime-info\">\n"
               "  <mime-type type=\"%1\">\n"
               "    <comment>Corvellum Document</comment>\n"
               "    <icon name=\"morlevant\"/>\n"
               "    <glob pattern=\"*.tsk\"/>\n"
               "  </mime-type>\n"
               "</mime-info>\n")
        .arg(QString::fromLatin1(mimeType));
}

QString FileAssociation::execLine() const {
    return execArgument(programPath_) + " %f";
}

QString FileAssociation::desktopEntry() const {
    // Only for opening workspaces: the menu shows an installed Morlevant, not a build's.
    return QStringLiteral("[Desktop Entry]\n"
                          "Type=Application\n"
                          "Name=Morlevant\n"
                          "Comment=Edit many plain-text files in one batch\n"
                          "Exec=%1\n"
                          "Icon=morlevant\n"
                          "Terminal=false\n"
                          "NoDisplay=true\n"
                          "MimeType=%2;\n")
        .arg(execLine(), QString::fromLatin1(mimeType));
}

} // namespace morlevant
