#pragma once

#include "platform/Shell.h"

namespace morlevant {

// The shell actions on the user's desktop: its default programs, file manager and tools.
class DesktopShell final : public Shell {
public:
    bool openUrl(const QUrl& url) override;
    bool openFolder(const QString& folder) override;
    bool startProgram(const QString& program, const QStringList& arguments) override;
    bool runTool(const QString& tool, const QStringList& arguments) override;
};

} // namespace morlevant
