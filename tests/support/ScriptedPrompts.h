#pragma once

#include "platform/Prompts.h"

#include <QList>
#include <QQueue>
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
    QList<FileDialogRequest> dialogs;

    void information(const QString& text, const QString& title) override {
        asked.append("information|" + title + "|" + text);
    }
    void error(const QString& text, const QString& title) override {
        asked.append("error|" + title + "|" + text);
    }
    Answer question(const QString& text, const QString& title, Buttons buttons) override {
        asked.append(QString(buttons == Buttons::YesNo ? "yesno|" : "yesnocancel|") + title + "|" +
                     text);
        if (answers.isEmpty()) {
            ADD_FAILURE() << "unexpected question: " << text.toStdString();
            return Answer::Cancel;
        }
        return answers.dequeue();
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
        if (fonts.isEmpty()) {
            ADD_FAILURE() << "unexpected font dialog";
            return std::nullopt;
        }
        return fonts.dequeue();
    }

    QString inputText(const QString& prompt, const QString& title) override {
        asked.append("input|" + title + "|" + prompt);
        if (inputs.isEmpty()) {
            ADD_FAILURE() << "unexpected input box: " << prompt.toStdString();
            return {};
        }
        return inputs.dequeue();
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
        if (fileNames.isEmpty()) {
            ADD_FAILURE() << "unexpected dialog: " << request.title.toStdString();
            return {};
        }
        return fileNames.dequeue();
    }
};

} // namespace morlevant::testing
