#pragma once

#include "platform/Shell.h"

namespace morlevant::testing {

// A shell that starts nothing and records what it was asked to open, start or run. With
// `refuses` set it answers as a desktop that has no program for anything.
class RecordingShell final : public Shell {
public:
    QStringList opened;
    QStringList tools;
    bool refuses = false;

    bool openUrl(const QUrl& url) override {
        opened.append("url " + url.toString());
        return !refuses;
    }
    bool openFolder(const QString& folder) override {
        opened.append("folder " + folder);
        return !refuses;
    }
    bool startProgram(const QString& program, const QStringList& arguments) override {
        opened.append("program " + program + " " + arguments.join(' '));
        return !refuses;
    }
    bool runTool(const QString& tool, const QStringList& arguments) override {
        tools.append(tool + " " + arguments.join(' '));
        return !refuses;
    }
};

} // namespace morlevant::testing
