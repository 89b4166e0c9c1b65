#pragma once

#include <QString>
#include <QStringList>

namespace morlevant {

// The text of a freedesktop mimeapps.list: groups such as "[Default Applications]" and
// "[Removed Associations]" whose keys are MIME types and whose values are lists of desktop
// entries ("type=a.desktop;b.desktop;"). Each change touches one entry of one key and leaves
// every other line as it was, so that taking back what was added gives the text as it stood.
namespace MimeAppsList {

inline constexpr char defaultApplications[] = "Default Applications";
inline constexpr char removedAssociations[] = "Removed Associations";

// The entries `group` lists for `type`, in their order.
QStringList entries(const QString& list, const QString& group, const QString& type);

// `list` with `entry` first among those `group` lists for `type`; the group and the key are
// added when missing.
QString withEntry(const QString& list, const QString& group, const QString& type,
                  const QString& entry);

// `list` without `entry` among those `group` lists for `type`; a key left without entries and a
// group left without keys go too.
QString withoutEntry(const QString& list, const QString& group, const QString& type,
                     const QString& entry);

} // namespace MimeAppsList

} // namespace morlevant
