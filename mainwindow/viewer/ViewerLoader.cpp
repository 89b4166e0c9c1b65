#include "mainwindow/viewer/ViewerLoader.h"

#include "mainwindow/find/SearchState.h"
#include "mainwindow/viewer/HtmlStrip.h"
#include "mainwindow/viewer/RegularFile.h"
#include "mainwindow/viewer/TextViewer.h"
#include "platform/Prompts.h"
#include "taskdef/TaskError.h"
#include "workspace/FileTypes.h"

#include <QFileInfo>

namespace morlevant {

QString nonTextCard(const QString& path, const QString& remark) {
    return QStringLiteral("File name: ") + path + QStringLiteral("\n\nremark: ") + remark;
}

ViewerLoader::ViewerLoader(TextViewer& viewer, SearchState& search, Prompts& prompts)
    : viewer_(viewer), search_(search), prompts_(prompts) {}

void ViewerLoader::loadtext(const QString& itemText, bool showHtml) {
    // The remark keeps the NUL that ends it; a Tag without one is all path.
    const qsizetype nul = itemText.indexOf(QChar(0));
    remark_ = itemText.left(nul + 1);
    path_ = itemText.mid(nul + 1);
    if (isNonTextFile(path_)) {
        viewer_.showText(nonTextCard(path_, remark_), path_);
        return;
    }
    if (!QFileInfo::exists(path_)) {
        viewer_.showText(QStringLiteral("Can't find file - ") + path_);
        return;
    }
    // Checked before anything opens the file: reading a pipe or a device would never end.
    // A file that cannot be shown counts as shown, so that it is not tried again (with another
    // message) until the user picks it anew.
    if (const auto reason = whyNotRegularFile(path_.toStdString())) {
        viewer_.showText(QString(), path_);
        prompts_.error(
            QStringLiteral("Can't show %1: %2.").arg(path_, QString::fromStdString(*reason)),
            promptTitle);
        return;
    }
    QString readPath = path_;
    if (showHtml && path_.toUpper().contains(QStringLiteral(".HTM"))) {
        try {
            stripHtmlFile(path_.toStdString(), tempFilePath_.toStdString());
        } catch (const TaskError& error) {
            viewer_.showText(QString(), path_);
            prompts_.error(QString::fromStdString(error.what()), promptTitle);
            return;
        }
        readPath = tempFilePath_;
    }
    if (const auto failure = viewer_.showFile(readPath, path_)) {
        prompts_.error(*failure, promptTitle);
        return;
    }
    search_.textLoaded();
}

} // namespace morlevant
