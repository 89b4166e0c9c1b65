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

} // namespace morlevant
