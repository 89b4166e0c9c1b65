#include "editor/KeyFilter.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

namespace morlevant {

KeyFilter::KeyFilter(QWidget* box, Accepts accepts, QWidget* enterMovesTo)
    : QObject(box), accepts_(std::move(accepts)), enterMovesTo_(enterMovesTo) {
    box->installEventFilter(this);
}

KeyFilter* KeyFilter::install(QWidget* box, Accepts accepts, QWidget* enterMovesTo) {
    return new KeyFilter(box, std::move(accepts), enterMovesTo);
}

bool KeyFilter::digit(char16_t key) {
    return key >= u'0' && key <= u'9';
}

bool KeyFilter::digitOrPoint(char16_t key) {
    return digit(key) || key == u'.';
}

bool KeyFilter::notEnter(char16_t key) {
    return key != u'\r';
}

void KeyFilter::makeShortenOnly(QWidget* box) {
    install(box, [](char16_t) { return false; })->shortenOnly_ = true;
    box->setContextMenuPolicy(Qt::NoContextMenu);
    box->setAcceptDrops(false);
}

bool KeyFilter::eventFilter(QObject* watched, QEvent* event) {
    // The middle button pastes the primary selection on X11: not into a box that only shrinks.
    if (shortenOnly_ &&
        (event->type() == QEvent::MouseButtonRelease || event->type() == QEvent::MouseButtonPress))
        return static_cast<QMouseEvent*>(event)->button() == Qt::MiddleButton;
    if (event->type() != QEvent::KeyPress)
        return QObject::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Escape:
        return false;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (enterMovesTo_ != nullptr)
            enterMovesTo_->setFocus(Qt::TabFocusReason);
        return !accepts_(u'\r');
    default:
        break;
    }
    // Shortcuts (copy, select all, ...) are not typed text; those that would put text in are
    // refused where the box may only be shortened.
    if (key->matches(QKeySequence::Paste) || key->matches(QKeySequence::Undo) ||
        key->matches(QKeySequence::Redo))
        return shortenOnly_;
    if (key->modifiers() & (Qt::ControlModifier | Qt::MetaModifier | Qt::AltModifier))
        return false;
    const QString text = key->text();
    if (text.isEmpty() || !text.at(0).isPrint())
        return false; // navigation and other keys that type nothing
    return !accepts_(text.at(0).unicode());
}

} // namespace morlevant
