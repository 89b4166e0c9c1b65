#include "workspace/WorkspaceBytes.h"

#include <QDir>
#include <QFile>
#include <optional>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#else
#include <QFileInfo>
#endif

namespace morlevant {

namespace {

constexpr qint64 blockSize = qint64{1} << 20;

QString notRegular(bool folder) {
    return folder ? QStringLiteral("it is a folder, not a regular file")
                  : QStringLiteral("it is not a regular file");
}

#ifdef Q_OS_UNIX
// Opened without waiting, since opening a named pipe for reading waits for a writer; the type
// is then read from the open file itself, so a file swapped after the user chose it is caught.
std::optional<QString> openRegular(const QString& path, QFile& file) {
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return QString::fromLocal8Bit(std::strerror(errno));
    struct stat status {};
    if (::fstat(fd, &status) != 0 || !S_ISREG(status.st_mode)) {
        const std::optional<QString> why = notRegular(S_ISDIR(status.st_mode));
        ::close(fd);
        return why;
    }
    if (!file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        return file.errorString();
    }
    return std::nullopt;
}
#else
// Opening a file here never waits for another program; its type is looked at first, so that
// a device is refused without being read.
std::optional<QString> openRegular(const QString& path, QFile& file) {
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        return notRegular(info.isDir());
    file.setFileName(path);
    if (!file.open(QIODevice::ReadOnly))
        return file.errorString();
    return std::nullopt;
}
#endif

} // namespace

std::variant<QByteArray, QString> readWorkspaceBytes(const QString& path) {
    const QString shownPath = QDir::toNativeSeparators(path);
    QFile file;
    if (const auto why = openRegular(path, file))
        return QString("Can't open the task file %1: %2").arg(shownPath, *why);
    // Read a block at a time, not by the size the file reports: a file may grow while it is
    // read, and some report no size at all.
    QByteArray bytes;
    while (true) {
        const QByteArray block = file.read(blockSize);
        if (file.error() != QFileDevice::NoError)
            return QString("Can't read the task file %1: %2").arg(shownPath, file.errorString());
        if (block.isEmpty())
            return bytes;
        bytes += block;
        if (bytes.size() > maxWorkspaceBytes)
            return QString("Can't open the task file %1: it is too large to be a workspace "
                           "(more than %2 MiB)")
                .arg(shownPath)
                .arg(maxWorkspaceBytes >> 20);
    }
}

} // namespace morlevant
