#pragma once

#include "mainwindow/desktop/FileAssociation.h"

#include <QString>
#include <optional>

namespace morlevant {

class Prompts;
class Shell;

// The commands that leave the program: the file shown opened in another program, the choice of
// that program, the help page, the home page, the feedback mail and the ".tsk" association.
// When the desktop refuses, one message says what could not be opened; nothing fails silently.
class ExternalPrograms {
public:
    ExternalPrograms(Prompts& prompts, Shell& shell, QString programPath);

    // The program that opens `path`: empty for the desktop's default one. Pictures, archives,
    // programs, help and sound files always go to their default program; other files to the
    // chosen `browser` when there is one.
    static QString programFor(const QString& path, const QString& browser);

    void openFile(const QString& path, const QString& browser);
    // Asks for the program to open files with; nothing when the user cancels or picks a file
    // that is not a program.
    std::optional<QString> chooseBrowser(const QString& current);
    void openFolder(const QString& folder);
    void openHelp();
    void openHomepage();
    void sendFeedback();
    void associate();
    void removeAssociation();

    // The help page beside the program (running from the build tree) or where the install put
    // it; empty when there is none.
    static QString findHelpPage(const QString& programFolder);

private:
    void openDefault(const QString& target, bool isFile);
    void changeAssociation(FileAssociation::Outcome (FileAssociation::*change)());
    void refused(const QString& text);

    Prompts& prompts_;
    Shell& shell_;
    QString programPath_;
};

} // namespace morlevant
