#pragma once

#include <QString>

namespace morlevant {

class Prompts;
class TextViewer;
struct SearchState;

// `loadtext`: shows in the viewer the file behind a tree node, given the node's Tag (the
// remark, a NUL and the path). A file of a non-text kind gets a short card instead of its
// bytes; an HTML file can be shown without its tags; anything else is shown as plain text.
class ViewerLoader final {
public:
    ViewerLoader(TextViewer& viewer, SearchState& search, Prompts& prompts);

    // Where the tag-stripped copy of an HTML file is written.
    void setTempFilePath(const QString& path) { tempFilePath_ = path; }

    // Shows the node's file; with showHtml an HTML file (".HTM" anywhere in its upper-cased
    // path) is shown without its tags. A file that cannot be shown leaves the viewer empty,
    // with one message naming the file and the reason (a missing file is said in the viewer
    // instead, and tried again on the next click).
    void loadtext(const QString& itemText, bool showHtml);

    // The two halves of the last Tag shown: the remark keeps the NUL that ended it.
    const QString& remark() const { return remark_; }
    const QString& path() const { return path_; }

private:
    TextViewer& viewer_;
    SearchState& search_;
    Prompts& prompts_;
    QString tempFilePath_;
    QString remark_;
    QString path_;
};

// The card shown for a file of a non-text kind.
QString nonTextCard(const QString& path, const QString& remark);

} // namespace morlevant
