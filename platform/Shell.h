#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

namespace morlevant {

// Everything that leaves the program for another one: the desktop's default program for a
// file or link, the file manager, a chosen program, and the desktop's own tools that refresh
// what it knows about file types. Each returns false when the desktop refused.
class Shell {
public:
    virtual ~Shell() = default;

    virtual bool openUrl(const QUrl& url) = 0;
    virtual bool openFolder(const QString& folder) = 0;
    virtual bool startProgram(const QString& program, const QStringList& arguments) = 0;
    // Runs one of the desktop's tools by name and waits for it; false when the tool is not
    // there or it failed.
    virtual bool runTool(const QString& tool, const QStringList& arguments) = 0;
};

} // namespace morlevant
