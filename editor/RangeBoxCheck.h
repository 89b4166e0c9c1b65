#pragma once

#include "taskdef/RangeText.h"

#include <QObject>

class QLineEdit;

namespace morlevant {

class Prompts;

// A range box of the Edit Range page: the key filter while typing (Enter in the row box moves
// on to the column box) and, whenever the box loses the focus, the normalisation written back
// into the box and the ordering check, whose message puts the focus back into the box.
class RangeBoxCheck final : public QObject {
public:
    static void install(QLineEdit* box, RangeBox kind, Prompts& prompts,
                        QLineEdit* enterMovesTo = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    RangeBoxCheck(QLineEdit* box, RangeBox kind, Prompts& prompts);
    void check();

    QLineEdit* box_;
    RangeBox kind_;
    Prompts& prompts_;
    bool messagePending_ = false;
};

} // namespace morlevant
