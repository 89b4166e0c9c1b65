#pragma once

#include "platform/Prompts.h"

#include <QList>
#include <QQueue>
#include <functional>
#include <gtest/gtest.h>

namespace morlevant::testing {

// Prompts answered from a script: each question or dialog takes the next scripted answer and
// is recorded as "kind|title|text". A prompt that nothing was scripted for fails the test and
// is answered Cancel (or with nothing).
class ScriptedPrompts final : public Prompts {
public:
    QStringList asked;
    QQueue<Answer> answers;
    QQueue<QStringList> fileNames;
    QQueue<std::optional<QFont>> fonts;
    QQueue<QString> inputs;
    QQueue<std::optional<QString>> edits;
    QList<FileDialogRequest> dialogs;
    // The file type each dialog started on, and those the user chooses (when scripted).
    QStringList startFilters;
    QQueue<QString> chosenFilters;

    // Called with each information box, as a user would act while it is shown.
    std::function<void(const QString& text)> onInformation;

    void information(const QString& text, const QString& title) override {
        asked.append("information|" + title + "|" + text);
        if (onInformation)
            onInformation(text);
    }
    void error(const QString& text, const QString& title) override {
        asked.append("error|" + title + "|" + text);
    }
    Answer question(const QString& text, const QString& title, Buttons buttons) override {
        asked.append(QString(buttons == Buttons::YesNo ? "yesno|" : "yesnocancel|") + title + "|" +
                     text);
        return next(answers, "question: " + text, Answer::Cancel);
    }
    QStringList openFileNames(const FileDialogRequest& request) override {
        return dialog("open files", request);
    }
    QString openFileName(const FileDialogRequest& request) override {
        return dialog("open file", request).value(0);
    }
    QString saveFileName(const FileDialogRequest& request) override {
        return dialog("save file", request).value(0);
    }
    std::optional<QFont> chooseFont(const QFont&) override {
        asked.append("font||");
        return next(fonts, "font dialog");
    }
    QString inputText(const QString& prompt, const QString& title) override {
        asked.append("input|" + title + "|" + prompt);
        return next(inputs, "input box: " + prompt);
    }
    std::optional<QString> editText(const QString& prompt, const QString& title,
                                    const QString& initial) override {
        asked.append("edit|" + title + "|" + prompt + "|" + initial);
        return next(edits, "input box: " + prompt);
    }

    // The messages and questions only, without the dialogs.
    QStringList messages() const {
        QStringList shown;
        for (const QString& entry : asked)
            if (!entry.startsWith("open") && !entry.startsWith("save") && !entry.startsWith("font"))
                shown.append(entry);
        return shown;
    }

private:
    QStringList dialog(const QString& kind, const FileDialogRequest& request) {
        asked.append(kind + "|" + request.title + "|" + request.filter);
        dialogs.append(request);
        if (request.selectedFilter != nullptr) {
            startFilters.append(*request.selectedFilter);
            if (!chosenFilters.isEmpty())
                *request.selectedFilter = chosenFilters.dequeue();
        }
        return next(fileNames, "dialog: " + request.title);
    }
    // The next scripted answer, or `otherwise` and a failure when none is left.
    template <class T> static T next(QQueue<T>& script, const QString& what, T otherwise = {}) {
        if (script.isEmpty()) {
            ADD_FAILURE() << "unexpected " << what.toStdString();
            return otherwise;
        }
        return script.dequeue();
    }
};

} // namespace morlevant::testing
