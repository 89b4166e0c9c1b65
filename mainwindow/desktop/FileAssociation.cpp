#include "mainwindow/desktop/FileAssociation.h"

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

const QString defaultsSection = QStringLiteral("[Default Applications]");

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

FileAssociation::Outcome FileAssociation::associate() {
    if (exists())
        return Outcome::AlreadyMatched;
    write();
    return Outcome::Matched;
}

FileAssociation::Outcome FileAssociation::remove() {
    if (!exists())
        return Outcome::NotMatched;
    erase();
    return Outcome::Removed;
}

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

bool FileAssociation::exists() const {
    return userClasses().childGroups().contains(QStringLiteral(".tsk"), Qt::CaseInsensitive);
}

void FileAssociation::write() {
    const QString program = QDir::toNativeSeparators(programPath_);
    QSettings classes = userClasses();
    classes.setValue(QStringLiteral(".tsk/Default"), QStringLiteral("Corvellum"));
    classes.setValue(QStringLiteral("Corvellum/Default"), QStringLiteral("Corvellum Document"));
    classes.setValue(QStringLiteral("Corvellum/DefaultIcon/Default"), program + " ,0");
    classes.setValue(QStringLiteral("Corvellum/shell/open/command/Default"), program + " %1");
    classes.sync();
    if (classes.status() != QSettings::NoError)
        throw FileAssociationError(QStringLiteral("Cannot write the .tsk file type"));
}

void FileAssociation::erase() {
    QSettings classes = userClasses();
    classes.remove(QStringLiteral(".tsk"));
    classes.remove(QStringLiteral("Corvellum"));
    classes.sync();
    if (classes.status() != QSettings::NoError)
        throw FileAssociationError(QStringLiteral("Cannot remove the .tsk file type"));
}

#else

bool FileAssociation::exists() const {
    return QFileInfo::exists(mimePackagePath());
}

void FileAssociation::write() {
    writeText(desktopEntryPath(), desktopEntry());
    writeText(mimeAppsPath(), withDefaultApplication(readText(mimeAppsPath()),
                                                     QString::fromLatin1(desktopEntryName)));
    // Written last: it is what says the association exists.
    writeText(mimePackagePath(), mimePackage());
    refreshDesktop();
}

void FileAssociation::erase() {
    removeFile(mimePackagePath());
    removeFile(desktopEntryPath());
    if (QFileInfo::exists(mimeAppsPath()))
        writeText(mimeAppsPath(), withDefaultApplication(readText(mimeAppsPath()), QString()));
    refreshDesktop();
}

#endif

void FileAssociation::refreshDesktop() {
    // Desktops without these tools read the folders directly.
    const QString data = userFolder(QStandardPaths::GenericDataLocation);
    shell_.runTool(QStringLiteral("update-mime-database"), {data + "/mime"});
    shell_.runTool(QStringLiteral("update-desktop-database"), {data + "/applications"});
}

QString FileAssociation::mimePackagePath() const {
    return userFolder(QStandardPaths::GenericDataLocation) + "/mime/packages/morlevant.xml";
}

QString FileAssociation::desktopEntryPath() const {
    return userFolder(QStandardPaths::GenericDataLocation) + "/applications/" +
           QString::fromLatin1(desktopEntryName);
}

QString FileAssociation::mimeAppsPath() const {
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
    return QStringLiteral("[Desktop Entry]\n"
                          "Type=Application\n"
                          "Name=Morlevant\n"
                          "GenericName=Batch Text Editor\n"
                          "Comment=Edit many plain-text files in one batch\n"
                          "Exec=%1\n"
                          "Icon=morlevant\n"
                          "Terminal=false\n"
                          "Categories=Utility;TextEditor;\n"
                          "MimeType=%2;\n")
        .arg(execLine(), QString::fromLatin1(mimeType));
}

QString FileAssociation::withDefaultApplication(const QString& list, const QString& entry) {
    const QString key = QString::fromLatin1(mimeType) + u'=';
    QStringList lines = list.split(u'\n');
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    qsizetype section = lines.indexOf(defaultsSection);
    if (section < 0 && !entry.isEmpty()) {
        lines.append(defaultsSection);
        section = lines.size() - 1;
    }
    if (section < 0)
        return list;
    for (qsizetype line = section + 1; line < lines.size() && !lines[line].startsWith(u'[');) {
        const bool ours =
            lines[line].startsWith(key) &&
            (!entry.isEmpty() || lines[line]
                                     .mid(key.size())
                                     .split(u';')
                                     .contains(QString::fromLatin1(desktopEntryName)));
        if (ours)
            lines.removeAt(line);
        else
            ++line;
    }
    if (!entry.isEmpty())
        lines.insert(section + 1, key + entry + u';');
    return lines.join(u'\n') + u'\n';
}

} // namespace morlevant
