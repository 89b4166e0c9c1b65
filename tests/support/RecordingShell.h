#pragma once

#include "Shell.h"

namespace morlevant::testing {

// A shell that starts nothing and records what it was asked to open or start.
class RecordingShell final : public Shell {
public:
    QStringList opened;

    bool openUrl(const QUrl& url) override {
        opened.append("url " + url.toString());
        return true;
    }
    bool openFolder(const QString& folder) override {
        opened.append("folder " + folder);
        return true;
    }
    bool startProgram(const QString& program, const QStringList& arguments) override {
        opened.append("program " + program + " " + arguments.join(' '));
        return true;
    }
};

} // namespace morlevant::testing
