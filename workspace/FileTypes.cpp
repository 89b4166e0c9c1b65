#include "workspace/FileTypes.h"

#include "workspace/TreeImage.h"

#include <array>

namespace morlevant {

namespace {

struct FileKind {
    const char* ending; // the last four characters of a path, in capitals
    treeImage::Index image;
};

constexpr std::array<FileKind, 12> fileKinds{{
    {".BMP", treeImage::bitmap},
    {".ZIP", treeImage::archive},
    {".EXE", treeImage::program},
    {".CHM", treeImage::helpFile},
    {".JPG", treeImage::jpeg},
    {".GIF", treeImage::gif},
    {".MP3", treeImage::mp3},
    {".MID", treeImage::midi},
    {".WAV", treeImage::wave},
    {".HTM", treeImage::html},
    {".TXT", treeImage::text},
    {"HTML", treeImage::html},
}};

} // namespace

const QStringList& FileTypeList() {
    static const QStringList types = [] {
        QStringList endings;
        for (const FileKind& kind : fileKinds)
            endings.append(QString::fromLatin1(kind.ending));
        return endings;
    }();
    return types;
}

bool isNonTextFile(const QString& path) {
    const int image = Imagen(path);
    return image != treeImage::none && image < treeImage::html;
}

int Imagen(const QString& path) {
    if (path.isEmpty())
        return treeImage::none;
    const qsizetype kind = FileTypeList().indexOf(path.right(4).toUpper());
    return kind < 0 ? treeImage::none : fileKinds[static_cast<std::size_t>(kind)].image;
}

} // namespace morlevant
