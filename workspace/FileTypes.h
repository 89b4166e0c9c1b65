#pragma once

#include <QString>
#include <QStringList>

namespace morlevant {

// The twelve file kinds the program knows by the last four characters of a path, in their
// fixed order; the tree's icons, the viewer and "Open In Default" all decide by this list.
const QStringList& FileTypeList();

// Whether a path names a file of one of the first nine kinds (pictures, archives, programs,
// help, sound), which the viewer does not show as text.
bool isNonTextFile(const QString& path);

// The tree image (see TreeImage.h) of a file path: none for an empty path or an unknown kind,
// otherwise that of its kind, with "HTML" sharing the image of ".HTM".
int Imagen(const QString& path);

} // namespace morlevant
