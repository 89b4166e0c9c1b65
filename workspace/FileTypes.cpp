#include "workspace/FileTypes.h"

namespace morlevant {

namespace {

constexpr int htmlImage = 12;
constexpr int htmImage = 10;

} // namespace

const QStringList& FileTypeList() {
    static const QStringList types{".BMP", ".ZIP", ".EXE", ".CHM", ".JPG", ".GIF",
                                   ".MP3", ".MID", ".WAV", ".HTM", ".TXT", "HTML"};
    return types;
}

bool isNonTextFile(const QString& path) {
    constexpr qsizetype nonTextKinds = 9;
    const qsizetype kind = FileTypeList().indexOf(path.right(4).toUpper());
    return kind >= 0 && kind < nonTextKinds;
}

int Imagen(const QString& path) {
    if (path.isEmpty())
        return 0;
    const QString ending = path.right(4).toUpper();
    const int image = static_cast<int>(FileTypeList().indexOf(ending)) + 1;
    return image == htmlImage ? htmImage : image;
}

} // namespace morlevant
