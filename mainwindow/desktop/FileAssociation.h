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
// Linux: a shared-mime-info package for *.tsk and a desktop entry that runs the program on the
// file, both in the user's data folder (XDG_DATA_HOME), the entry made the type's default in the
// user's mimeapps.list (XDG_CONFIG_HOME); the desktop's databases are refreshed through the
// shell. The association exists when the MIME package does.
// Windows: the ".tsk" and "Corvellum" classes under the current user.
class FileAssociation {
public:
    enum class Outcome { AlreadyMatched, Matched, Removed, NotMatched };

    static constexpr char mimeType[] = "application/x-corvellum";
    static constexpr char desktopEntryName[] = "morlevant.desktop";

    FileAssociation(Shell& shell, QString programPath);

    // Records the type unless it is recorded already (also by another program): an existing
    // association is left untouched. Throws FileAssociationError.
    Outcome associate();
    // Deletes the records when they exist. Throws FileAssociationError.
    Outcome remove();
    bool exists() const;

    // The message each outcome shows.
    static QString message(Outcome outcome);

    // What is written (Linux).
    static QString mimePackage();
    QString desktopEntry() const;
    // The entry's command line: the program, quoted as desktop entries require, and the file.
    QString execLine() const;
    // `list` (a mimeapps.list) with `entry` as the default for the workspace type; an empty
    // `entry` takes out the default that names this program's entry.
    static QString withDefaultApplication(const QString& list, const QString& entry);

private:
    QString mimePackagePath() const;
    QString desktopEntryPath() const;
    QString mimeAppsPath() const;
    void write();
    void erase();
    void refreshDesktop();

    Shell& shell_;
    QString programPath_;
};

} // namespace morlevant
