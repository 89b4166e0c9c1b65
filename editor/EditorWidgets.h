#pragma once

#include <QLabel>
#include <QString>
#include <utility>

namespace morlevant {

// The name of a control of a control array, as the editor's controls are named: "Text_cal(7)".
inline QString arrayName(const char* name, int index) {
    return QString::fromLatin1(name) + u'(' + QString::number(index) + u')';
}

// A new widget with its object name; the layout it is added to becomes its parent.
template <class Widget, class... Args> Widget* named(const QString& objectName, Args&&... args) {
    auto* widget = new Widget(std::forward<Args>(args)...);
    widget->setObjectName(objectName);
    return widget;
}

// A label that shows its text exactly, blanks included.
inline QLabel* plainLabel(const QString& text, const QString& objectName = {}) {
    auto* label = named<QLabel>(objectName, text);
    label->setTextFormat(Qt::PlainText);
    return label;
}

// What a screen reader says for a control captioned `caption`: its words without the colon
// ("decimal     number:" is "decimal number").
inline QString spokenName(const QString& caption) {
    QString name = caption.simplified();
    if (name.endsWith(u':'))
        name.chop(1);
    return name;
}

// Makes label the label of control: its buddy, and what a screen reader calls the control.
inline QLabel* labelFor(QLabel* label, QWidget* control) {
    label->setBuddy(control);
    control->setAccessibleName(spokenName(label->text()));
    return label;
}

} // namespace morlevant
