#include "editor/RangeBoxCheck.h"

#include "editor/KeyFilter.h"
#include "platform/Prompts.h"

#include <QFocusEvent>
#include <QLineEdit>
#include <QTimer>

namespace morlevant {

RangeBoxCheck::RangeBoxCheck(QLineEdit* box, RangeBox kind, Prompts& prompts)
    : QObject(box), box_(box), kind_(kind), prompts_(prompts) {
    box->installEventFilter(this);
}

void RangeBoxCheck::install(QLineEdit* box, RangeBox kind, Prompts& prompts,
                            QLineEdit* enterMovesTo) {
    KeyFilter::install(
        box, [kind](char16_t key) { return rangeKeyFilter(kind, key).keep; }, enterMovesTo);
    new RangeBoxCheck(box, kind, prompts);
}

bool RangeBoxCheck::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut) {
        // Switching to another window or opening the box's pop-up menu is not leaving the box.
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            check();
    }
    return QObject::eventFilter(watched, event);
}

void RangeBoxCheck::check() {
    const RangeCheck result = checkRangeText(box_->text().toStdString(), kind_);
    const QString normalised = QString::fromStdString(result.text);
    if (normalised != box_->text())
        box_->setText(normalised);
    if (!result.error || messagePending_)
        return;
    // The message waits until the click or key that moved the focus is over: a message box
    // in the middle of a click would swallow it, and the same leave would report twice.
    messagePending_ = true;
    QTimer::singleShot(0, box_, [this, message = QString::fromStdString(*result.error)] {
        messagePending_ = false;
        prompts_.information(message, promptTitle);
        if (box_->isVisible())
            box_->setFocus(Qt::OtherFocusReason);
    });
}

} // namespace morlevant
