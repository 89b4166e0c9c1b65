#pragma once

#include <QFont>
#include <QString>
#include <QStringList>
#include <optional>

namespace morlevant {

// The title of every message box that does not name its own.
inline constexpr char promptTitle[] = "Morlevant";

enum class Answer { Yes, No, Cancel };
enum class Buttons { YesNo, YesNoCancel };

// A file dialog: `filter` in Qt's form ("Task File (*.tsk);;All Files (*)").
struct FileDialogRequest {
    QString title;
    QString filter;
    QString directory;
    QString fileName;
    // When given, the file type the dialog starts on (empty: the first), and afterwards the one
    // the user chose.
    QString* selectedFilter = nullptr;
};

// Every message box, question, input box and file or font dialog the program shows goes through
// here, so the commands can be driven by a script that answers as told and records what was asked.
class Prompts {
public:
    virtual ~Prompts() = default;

    virtual void information(const QString& text, const QString& title) = 0;
    virtual void error(const QString& text, const QString& title) = 0;
    // Question icon; the answer is one of the offered buttons (closing the box counts as the
    // last one: No for YesNo, Cancel for YesNoCancel).
    virtual Answer question(const QString& text, const QString& title, Buttons buttons) = 0;
    // Each returns nothing (an empty list, an empty text) when the user cancels.
    virtual QStringList openFileNames(const FileDialogRequest& request) = 0;
    virtual QString openFileName(const FileDialogRequest& request) = 0;
    virtual QString saveFileName(const FileDialogRequest& request) = 0;
    virtual std::optional<QFont> chooseFont(const QFont& initial) = 0;
    // An input box asking for one line of text; empty when the user cancels.
    virtual QString inputText(const QString& prompt, const QString& title) = 0;
    // An input box holding `initial` for the user to change; nothing when the user cancels, so
    // that an emptied box is an answer of its own.
    virtual std::optional<QString> editText(const QString& prompt, const QString& title,
                                            const QString& initial) = 0;
};

} // namespace morlevant
