#pragma once

#include <QString>
#include <stdexcept>

namespace morlevant {

class Shell;

// A file of the association that could not be written or removed; the text names it.
class FileAssociationError final : public std::runtime_error {
public:
    explicit FileAssociationError(const QString& text) : std::runtime_error(text.toStdString()) {}
    QString text() const { return QString::fromStdString(what()); }
};

// The workspace file type ".tsk" ("Corvellum Document") recorded in the desktop's file-type
// store, so that opening a workspace file starts the program on it.
//
// Linux, after the freedesktop rules: when an install put the menu entry and the type in one of
// the data folders (XDG_DATA_HOME, XDG_DATA_DIRS), only the user's mimeapps.list
// (XDG_CONFIG_HOME) changes: associating makes the installed entry the type's default, removing
// takes that default out and lists the entry under the removed associations. A program that is
// not installed also writes its own entry, with its absolute path, and the type into the user's
// data folder, under names no install uses, and removing deletes them again.
// Windows: the ".tsk" and "Corvellum" classes under the current user.
class FileAssociation {
public:
    enum class Outcome { AlreadyMatched, Matched, Removed, NotMatched };

    static constexpr char mimeType[] = "application/x-corvellum";
    // The names an install gives the menu entry and the type's package.
    static constexpr char installedEntry[] = "morlevant.desktop";
    static constexpr char installedPackage[] = "morlevant.xml";
    // The names of those written for a program that is not installed.
    static constexpr char userEntry[] = "morlevant-user.desktop";
    static constexpr char userPackage[] = "morlevant-user.xml";

    FileAssociation(Shell& shell, QString programPath);

    // Makes Morlevant the type's default unless the user has a default for it (also another
    // program's): an existing association is left untouched. Throws FileAssociationError.
    Outcome associate();
    // Takes back an association: NotMatched when there is none. Throws FileAssociationError.
    Outcome remove();

    // The message each outcome shows.
    static QString message(Outcome outcome);

    // What is written for a program that is not installed (Linux).
    static QString mimePackage();
    QString desktopEntry() const;
    // The entry's command line: the program, quoted as desktop entries require, and the file.
    QString execLine() const;

private:
    // Whether an install put the entry and the type in one of the data folders.
    static bool installed();
    static QString userPackagePath();
    static QString userEntryPath();
    static QString mimeAppsPath();
    void refreshDesktop();

    Shell& shell_;
    QString programPath_;
};

} // namespace morlevant
