#pragma once

#include <QObject>
#include <QPointer>
#include <functional>

class QWidget;

namespace morlevant {

// Decides, key by key, which typed characters a text box receives. Backspace, Delete, the
// arrow keys, Tab and Escape always pass; Enter counts as a character (code 13) and, when a
// next box is given, moves the focus there instead of reaching the box. Pasting from the
// pop-up menu passes no filter, as in every text box of the editor.
class KeyFilter final : public QObject {
public:
    using Accepts = std::function<bool(char16_t)>;

    // Installs itself on `box`, which owns it.
    static KeyFilter* install(QWidget* box, Accepts accepts, QWidget* enterMovesTo = nullptr);

    // Keys typed as text: digits only; digits and "."; everything but Enter.
    static bool digit(char16_t key);
    static bool digitOrPoint(char16_t key);
    static bool notEnter(char16_t key);

    // A box the keyboard can only shorten: no typing, pasting, undoing or dropping; Backspace,
    // Delete and cutting a selection still work.
    static void makeShortenOnly(QWidget* box);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    KeyFilter(QWidget* box, Accepts accepts, QWidget* enterMovesTo);

    Accepts accepts_;
    QPointer<QWidget> enterMovesTo_;
    bool shortenOnly_ = false;
};

} // namespace morlevant
